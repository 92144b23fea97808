#include "UsageReport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>

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
    if (!text.contains(QLatin1Char(',')) && !text.contains(QLatin1Char('"')) && !text.contains(QLatin1Char('\n')))
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

LimitSettings readLimitSettings(const QString& path)
{
    LimitSettings limit;
    QSettings file(path, QSettings::IniFormat);
    file.beginGroup(QStringLiteral("uselimit"));
    const auto isTrue = [&file](const char* key) {
        return file.value(QLatin1String(key)).toString().trimmed().compare(QLatin1String("true"), Qt::CaseInsensitive)
               == 0;
    };
    if (file.contains(QStringLiteral("chkRecurrence")) && !isTrue("chkRecurrence")) {
        limit.kind = LimitSettings::Kind::FromDate;
        limit.startDate = QDate::fromString(file.value(QStringLiteral("startdate")).toString().trimmed(),
                                            QStringLiteral("yyyy-MM-dd"));
    } else if (isTrue("radioDaily")) {
        limit.kind = LimitSettings::Kind::Daily;
    } else if (isTrue("radioWeekly")) {
        limit.kind = LimitSettings::Kind::Weekly;
    }
    return limit;
}

QList<Period> currentPeriods(const QDateTime& now, const velt::PeriodSettings& settings, const LimitSettings& limit)
{
    const velt::PeriodStarts starts = velt::periodStarts(now, settings);
    QList<Period> periods = {{QStringLiteral("today"), starts.today, now},
                             {QStringLiteral("week"), starts.week, now},
                             {QStringLiteral("month"), starts.month, now},
                             {QStringLiteral("year"), starts.year, now}};
    QDateTime limitStart;
    switch (limit.kind) {
    case LimitSettings::Kind::Daily: limitStart = starts.today; break;
    case LimitSettings::Kind::Weekly: limitStart = starts.week; break;
    case LimitSettings::Kind::Monthly: limitStart = starts.month; break;
    case LimitSettings::Kind::FromDate:
        limitStart = (limit.startDate.isValid() ? limit.startDate : now.date().addMonths(-3)).startOfDay();
        // A start still to come counts nothing yet.
        limitStart = std::min(limitStart, now);
        break;
    }
    periods.append({QStringLiteral("limit"), limitStart, now});
    return periods;
}

Period rangePeriod(const QDate& from, const QDate& to)
{
    return {QStringLiteral("range"), from.startOfDay(), to.addDays(1).startOfDay()};
}

QList<PeriodUsage> collect(UsageSource& source, const QList<Period>& periods)
{
    QList<PeriodUsage> report;
    for (const Period& period : periods) {
        PeriodUsage entry{period, {}, {}};
        std::map<std::pair<QString, QString>, velt::Usage> merged;
        for (const KeyedUsage& row : source.usage(period.start.toSecsSinceEpoch(), period.end.toSecsSinceEpoch())) {
            merged[{row.key.interfaceName, row.key.connection}] += row.usage;
            entry.total += row.usage;
        }
        for (const auto& [key, usage] : merged)
            entry.byKey.append({{key.first, key.second}, usage});
        report.append(entry);
    }
    return report;
}

QByteArray toJson(const QList<PeriodUsage>& report)
{
    QJsonArray periods;
    for (const PeriodUsage& entry : report) {
        QJsonObject period{{QStringLiteral("name"), entry.period.name},
                           {QStringLiteral("start"), isoTime(entry.period.start)},
                           {QStringLiteral("end"), isoTime(entry.period.end)}};
        addFigures(period, entry.total);
        QJsonArray interfaces;
        for (const KeyedUsage& row : entry.byKey) {
            QJsonObject item{{QStringLiteral("interface"), row.key.interfaceName}};
            if (!row.key.connection.isEmpty())
                item.insert(QStringLiteral("connection"), row.key.connection);
            addFigures(item, row.usage);
            interfaces.append(item);
        }
        period.insert(QStringLiteral("interfaces"), interfaces);
        periods.append(period);
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("periods"), periods}}).toJson(QJsonDocument::Indented);
}

QByteArray toCsv(const QList<PeriodUsage>& report)
{
    QString out = QStringLiteral("period,start,end,scope,interface,connection,received,sent,connected_seconds\n");
    const auto line = [&out](const PeriodUsage& entry, const QString& scope, const UsageKey& key,
                             const velt::Usage& usage) {
        out += QStringList{entry.period.name, isoTime(entry.period.start), isoTime(entry.period.end), scope,
                           csvField(key.interfaceName), csvField(key.connection), QString::number(usage.received),
                           QString::number(usage.sent), QString::number(seconds(usage))}
                   .join(QLatin1Char(','))
               + QLatin1Char('\n');
    };
    for (const PeriodUsage& entry : report) {
        line(entry, QStringLiteral("total"), {}, entry.total);
        for (const KeyedUsage& row : entry.byKey)
            line(entry, QStringLiteral("interface"), row.key, row.usage);
    }
    return out.toUtf8();
}

QString toTable(const QList<PeriodUsage>& report, const QLocale& locale)
{
    QList<QStringList> rows{{QStringLiteral("Period"), QStringLiteral("From"), QStringLiteral("To"),
                             QStringLiteral("Interface"), QStringLiteral("Connection"), QStringLiteral("Received"),
                             QStringLiteral("Sent"), QStringLiteral("Connected")}};
    const QString timeFormat = QStringLiteral("yyyy-MM-dd HH:mm");
    const auto figures = [&locale](const velt::Usage& usage) {
        return QStringList{locale.formattedDataSize(qint64(usage.received), 2, QLocale::DataSizeTraditionalFormat),
                           locale.formattedDataSize(qint64(usage.sent), 2, QLocale::DataSizeTraditionalFormat),
                           duration(seconds(usage))};
    };
    for (const PeriodUsage& entry : report) {
        rows.append(QStringList{entry.period.name, entry.period.start.toString(timeFormat),
                                entry.period.end.toString(timeFormat), QStringLiteral("all"), QString()}
                    + figures(entry.total));
        for (const KeyedUsage& row : entry.byKey)
            rows.append(QStringList{QString(), QString(), QString(), row.key.interfaceName, row.key.connection}
                        + figures(row.usage));
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
