#include "UsageReport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <map>

namespace report {

namespace {

    // With the offset, so a reader elsewhere gets the same instant.
    QString isoTime(const QDateTime& time)
    {
        return time.toOffsetFromUtc(time.offsetFromUtc()).toString(Qt::ISODate);
    }

    qint64 seconds(const velt::Usage& usage)
    {
        return usage.connectedMs / 1000;
    }

    void addFigures(QJsonObject& object, const velt::Usage& usage)
    {
        // Doubles hold every byte count below 8 PiB exactly.
        object.insert(QStringLiteral("received"), double(usage.received));
        object.insert(QStringLiteral("sent"), double(usage.sent));
        object.insert(QStringLiteral("connected_seconds"), double(seconds(usage)));
    }

    QString csvField(const QString& text)
    {
        if (!text.contains(QLatin1Char(',')) && !text.contains(QLatin1Char('"'))
            && !text.contains(QLatin1Char('\n')))
            return text;
        QString quoted = text;
        quoted.replace(QLatin1Char('"'), QLatin1String("\"\""));
        return QLatin1Char('"') + quoted + QLatin1Char('"');
    }

    QString duration(qint64 totalSeconds)
    {
        return QStringLiteral("%1:%2:%3")
            .arg(totalSeconds / 3600)
            .arg(totalSeconds / 60 % 60, 2, 10, QLatin1Char('0'))
            .arg(totalSeconds % 60, 2, 10, QLatin1Char('0'));
    }

} // namespace

QList<Period> currentPeriods(
    const QDateTime& now, const velt::PeriodSettings& settings, const LimitSettings& limit)
{
    const velt::PeriodStarts starts = velt::periodStarts(now, settings);
    QList<Period> periods
        = { { QStringLiteral("today"), starts.today, now }, { QStringLiteral("week"), starts.week, now },
              { QStringLiteral("month"), starts.month, now }, { QStringLiteral("year"), starts.year, now } };
    periods.append(
        { QStringLiteral("limit"), allowance::currentLimitPeriod(now, settings, limit).start, now });
    return periods;
}

QList<Period> historyPeriods(
    const QDateTime& now, const velt::PeriodSettings& settings, const LimitSettings& limit, HistoryKind kind)
{
    QList<Period> periods;
    if (kind == HistoryKind::Hours) {
        // A day's worth and the one before: what last night cost is the
        // question hours answer. Hours step in absolute time, so a repeated
        // or skipped hour at a clock change is still one bar of an hour.
        QDateTime start(now.date(), QTime(now.time().hour(), 0));
        if (start > now)
            start = start.addSecs(-3600); // a skipped local hour resolved forward
        QDateTime end = now;
        for (int i = 0; i < 48; ++i) {
            periods.prepend({ QStringLiteral("hour"), start, end });
            end = start;
            start = start.addSecs(-3600);
        }
        return periods;
    }
    if (kind == HistoryKind::Months) {
        QDateTime end = now;
        QDateTime start = velt::periodStarts(now, settings).month;
        for (int i = 0; i < 12; ++i) {
            periods.prepend({ QStringLiteral("month"), start, end });
            end = start;
            start = velt::periodStarts(start.addSecs(-1), settings).month;
        }
        return periods;
    }
    const allowance::LimitPeriod current = allowance::currentLimitPeriod(now, settings, limit);
    const allowance::LimitPeriod previous = allowance::previousLimitPeriod(current, settings, limit);
    const QDate first = previous.start.isValid() ? previous.start.date()
                                                 : std::max(current.start.date(), now.date().addMonths(-3));
    for (QDate day = first; day <= now.date(); day = day.addDays(1))
        periods.append(
            { QStringLiteral("day"), day.startOfDay(), std::min(day.addDays(1).startOfDay(), now) });
    return periods;
}

Period rangePeriod(const QDate& from, const QDate& to)
{
    return { QStringLiteral("range"), from.startOfDay(), to.addDays(1).startOfDay() };
}

QList<PeriodUsage> collect(UsageSource& source, const QList<Period>& periods)
{
    QList<PeriodUsage> report;
    for (const Period& period : periods) {
        PeriodUsage entry { period, {}, {} };
        std::map<std::pair<QString, QString>, velt::Usage> merged;
        for (const KeyedUsage& row :
            source.usage(period.start.toSecsSinceEpoch(), period.end.toSecsSinceEpoch())) {
            merged[{ row.key.interfaceName, row.key.connection }] += row.usage;
            entry.total += row.usage;
        }
        for (const auto& [key, usage] : merged)
            entry.byKey.append({ { key.first, key.second }, usage });
        if (period.name == QLatin1String("limit"))
            entry.adjustment = source.adjustment(period.start.toSecsSinceEpoch());
        report.append(entry);
    }
    return report;
}

allowance::Figures limitFigures(const QList<PeriodUsage>& report, const QDateTime& now,
    const allowance::LimitPeriod& period, quint64 limitBytes)
{
    for (const PeriodUsage& entry : report)
        if (entry.period.name == QLatin1String("limit"))
            return allowance::compute(
                now, period, entry.total.received + entry.total.sent, entry.adjustment, limitBytes);
    return {};
}

QByteArray historyJson(const QList<PeriodUsage>& history)
{
    QJsonArray list;
    for (const PeriodUsage& entry : history)
        list.append(QJsonObject { { QStringLiteral("start"), isoTime(entry.period.start) },
            { QStringLiteral("end"), isoTime(entry.period.end) },
            { QStringLiteral("received"), double(entry.total.received) },
            { QStringLiteral("sent"), double(entry.total.sent) } });
    return QJsonDocument(QJsonObject { { QStringLiteral("history"), list } }).toJson(QJsonDocument::Indented);
}

QByteArray toOpenMetrics(const QList<PeriodUsage>& report, const allowance::Figures& figures)
{
    QByteArray out;
    const auto family = [&out](const char* name, const char* type, const char* unit, const char* help) {
        out += QByteArray("# TYPE ") + name + ' ' + type + '\n';
        if (*unit)
            out += QByteArray("# UNIT ") + name + ' ' + unit + '\n';
        out += QByteArray("# HELP ") + name + ' ' + help + '\n';
    };
    const auto counter = [&](const char* name, const char* unit, const char* help, auto value) {
        family(name, "counter", unit, help);
        for (const PeriodUsage& entry : report)
            out += QByteArray(name) + "_total{period=\"" + entry.period.name.toUtf8() + "\"} "
                + QByteArray::number(value(entry)) + '\n';
    };
    counter("netinfo_received_bytes", "bytes", "Bytes received since the period began.",
        [](const PeriodUsage& e) { return e.total.received; });
    counter("netinfo_sent_bytes", "bytes", "Bytes sent since the period began.",
        [](const PeriodUsage& e) { return e.total.sent; });
    counter("netinfo_connected_seconds", "seconds", "Time connected since the period began.",
        [](const PeriodUsage& e) { return seconds(e.total); });
    const auto gauge = [&](const char* name, const char* unit, const char* help, const QByteArray& value) {
        family(name, "gauge", unit, help);
        out += QByteArray(name) + ' ' + value + '\n';
    };
    gauge("netinfo_limit_used_bytes", "bytes", "Usage in the limit period, calibration included.",
        QByteArray::number(figures.used));
    gauge("netinfo_limit_adjustment_bytes", "bytes", "The calibration entered for the limit period.",
        QByteArray::number(figures.adjustment));
    gauge("netinfo_limit_forecast_bytes", "bytes",
        "The limit period's total if the rest goes on like the days so far.",
        QByteArray::number(figures.forecast));
    // A limit that is not set is no limit of zero bytes: leave its series out.
    if (figures.limit > 0) {
        gauge("netinfo_limit_bytes", "bytes", "The data limit.", QByteArray::number(figures.limit));
        gauge("netinfo_limit_remaining_bytes", "bytes", "What is left of the data limit.",
            QByteArray::number(figures.remaining));
        gauge("netinfo_limit_used_percent", "percent", "Share of the data limit used.",
            QByteArray::number(figures.percent, 'f', 2));
    }
    if (figures.daysLeft >= 0)
        gauge("netinfo_limit_left_days", "days", "Calendar days left in the limit period, today included.",
            QByteArray::number(figures.daysLeft));
    out += "# EOF\n";
    return out;
}

QByteArray currentOpenMetrics(UsageSource& source, const QDateTime& now, const velt::PeriodSettings& settings,
    const LimitSettings& limit)
{
    const QList<PeriodUsage> usage = collect(source, currentPeriods(now, settings, limit));
    return toOpenMetrics(usage,
        limitFigures(usage, now, allowance::currentLimitPeriod(now, settings, limit), limit.limitBytes));
}

QByteArray toJson(const QList<PeriodUsage>& report)
{
    QJsonArray periods;
    for (const PeriodUsage& entry : report) {
        QJsonObject period { { QStringLiteral("name"), entry.period.name },
            { QStringLiteral("start"), isoTime(entry.period.start) },
            { QStringLiteral("end"), isoTime(entry.period.end) } };
        addFigures(period, entry.total);
        if (entry.adjustment != 0)
            period.insert(QStringLiteral("adjustment"), double(entry.adjustment));
        QJsonArray interfaces;
        for (const KeyedUsage& row : entry.byKey) {
            QJsonObject item { { QStringLiteral("interface"), row.key.interfaceName } };
            if (!row.key.connection.isEmpty())
                item.insert(QStringLiteral("connection"), row.key.connection);
            addFigures(item, row.usage);
            interfaces.append(item);
        }
        period.insert(QStringLiteral("interfaces"), interfaces);
        periods.append(period);
    }
    return QJsonDocument(QJsonObject { { QStringLiteral("periods"), periods } })
        .toJson(QJsonDocument::Indented);
}

QByteArray toCsv(const QList<PeriodUsage>& report)
{
    QString out
        = QStringLiteral("period,start,end,scope,interface,connection,received,sent,connected_seconds\n");
    const auto line = [&out](const PeriodUsage& entry, const QString& scope, const UsageKey& key,
                          const velt::Usage& usage) {
        out += QStringList { entry.period.name, isoTime(entry.period.start), isoTime(entry.period.end), scope,
            csvField(key.interfaceName), csvField(key.connection), QString::number(usage.received),
            QString::number(usage.sent), QString::number(seconds(usage)) }
                   .join(QLatin1Char(','))
            + QLatin1Char('\n');
    };
    for (const PeriodUsage& entry : report) {
        line(entry, QStringLiteral("total"), {}, entry.total);
        for (const KeyedUsage& row : entry.byKey)
            line(entry, QStringLiteral("interface"), row.key, row.usage);
        if (entry.adjustment != 0)
            out += QStringList { entry.period.name, isoTime(entry.period.start), isoTime(entry.period.end),
                QStringLiteral("adjustment"), QString(), QString(), QString::number(entry.adjustment),
                QStringLiteral("0"), QStringLiteral("0") }
                       .join(QLatin1Char(','))
                + QLatin1Char('\n');
    }
    return out.toUtf8();
}

QString toTable(const QList<PeriodUsage>& report, const QLocale& locale)
{
    QList<QStringList> rows { { QStringLiteral("Period"), QStringLiteral("From"), QStringLiteral("To"),
        QStringLiteral("Interface"), QStringLiteral("Connection"), QStringLiteral("Received"),
        QStringLiteral("Sent"), QStringLiteral("Connected") } };
    const QString timeFormat = QStringLiteral("yyyy-MM-dd HH:mm");
    const auto figures = [&locale](const velt::Usage& usage) {
        return QStringList { locale.formattedDataSize(
                                 qint64(usage.received), 2, QLocale::DataSizeTraditionalFormat),
            locale.formattedDataSize(qint64(usage.sent), 2, QLocale::DataSizeTraditionalFormat),
            duration(seconds(usage)) };
    };
    for (const PeriodUsage& entry : report) {
        rows.append(QStringList { entry.period.name, entry.period.start.toString(timeFormat),
                        entry.period.end.toString(timeFormat), QStringLiteral("all"), QString() }
            + figures(entry.total));
        for (const KeyedUsage& row : entry.byKey)
            rows.append(
                QStringList { QString(), QString(), QString(), row.key.interfaceName, row.key.connection }
                + figures(row.usage));
        if (entry.adjustment != 0)
            rows.append(
                QStringList { QString(), QString(), QString(), QStringLiteral("calibration"), QString(),
                    (entry.adjustment < 0 ? QStringLiteral("-") : QString())
                        + locale.formattedDataSize(
                            std::abs(entry.adjustment), 2, QLocale::DataSizeTraditionalFormat),
                    QString(), QString() });
    }
    QList<int> widths(rows.first().size(), 0);
    for (const QStringList& row : rows)
        for (int i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], int(row[i].size()));
    QString out;
    for (const QStringList& row : rows) {
        QString line;
        for (int i = 0; i < row.size(); ++i) {
            // Figures line up on the right, names on the left.
            line += i >= 5 ? row[i].rightJustified(widths[i]) : row[i].leftJustified(widths[i]);
            line += QStringLiteral("  ");
        }
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        out += line + QLatin1Char('\n');
    }
    return out;
}

} // namespace report
