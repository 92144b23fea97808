#include "ReportRequest.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QMap>

namespace report {

namespace {

    ReportRequest stopped(ReportRequest::Stop stop, const QString& message, int exitCode)
    {
        ReportRequest request;
        request.stop = stop;
        request.message = message;
        request.exitCode = exitCode;
        return request;
    }

    ReportRequest invalid(const QString& message)
    {
        return stopped(ReportRequest::Stop::Invalid, message, 2);
    }

} // namespace

QDate parseReportDate(const QString& text)
{
    return QDate::fromString(text, Qt::ISODate);
}

ReportRequest parseReportRequest(
    const QStringList& arguments, const QDate& today, const QString& defaultDatabase)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Shows the usage NetInfo recorded: today, this week, this month, this year and the usage limit's "
        "period, "
        "or --from/--to, in total and per interface. CSV rows of scope \"total\" hold the period's totals."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption from(
        QStringLiteral("from"), QStringLiteral("First day of a range (YYYY-MM-DD)."), QStringLiteral("date"));
    const QCommandLineOption to(QStringLiteral("to"),
        QStringLiteral("Last day of a range (YYYY-MM-DD; default today)."), QStringLiteral("date"));
    const QCommandLineOption json(QStringLiteral("json"), QStringLiteral("Print JSON."));
    const QCommandLineOption csv(QStringLiteral("csv"), QStringLiteral("Print CSV."));
    const QCommandLineOption database(QStringLiteral("database"),
        QStringLiteral("Read the usage ledger <file> (default: %1).").arg(defaultDatabase),
        QStringLiteral("file"));
    const QCommandLineOption history(QStringLiteral("history"),
        QStringLiteral("Usage per hour over the last 48 (hours), per day over the current and the "
                       "previous limit period (days), or per month over the last twelve (months)."),
        QStringLiteral("hours|days|months"));
    const QCommandLineOption openMetrics(QStringLiteral("openmetrics"),
        QStringLiteral("Print the periods' counters and the limit's figures in the "
                       "OpenMetrics text format."));
    parser.addOptions({ from, to, json, csv, history, openMetrics, database });

    // What QCommandLineParser::process() would print before exiting, kept
    // here so that nothing but main ends the process.
    const QString program = QCoreApplication::applicationName();
    if (!parser.parse(arguments))
        return stopped(ReportRequest::Stop::Syntax, parser.errorText(), 1);
    if (parser.isSet(version))
        return stopped(ReportRequest::Stop::Shown,
            program + QLatin1Char(' ') + QCoreApplication::applicationVersion() + QLatin1Char('\n'), 0);
    if (parser.isSet(help))
        return stopped(ReportRequest::Stop::Shown, parser.helpText(), 0);

    if (int(parser.isSet(json)) + int(parser.isSet(csv)) + int(parser.isSet(openMetrics)) > 1)
        return invalid(QStringLiteral("choose one of --json, --csv and --openmetrics"));
    const bool ranged = parser.isSet(from) || parser.isSet(to);
    if (int(ranged) + int(parser.isSet(history)) + int(parser.isSet(openMetrics)) > 1)
        return invalid(QStringLiteral("--from/--to, --history and --openmetrics go alone"));
    static const QMap<QString, HistoryKind> kinds { { QStringLiteral("hours"), HistoryKind::Hours },
        { QStringLiteral("days"), HistoryKind::Days }, { QStringLiteral("months"), HistoryKind::Months } };
    const QString historyKind = parser.value(history);
    if (parser.isSet(history) && !kinds.contains(historyKind))
        return invalid(QStringLiteral("--history takes hours, days or months, not \"%1\"").arg(historyKind));

    ReportRequest request;
    if (parser.isSet(history)) {
        request.periods = Periods::History;
        request.history = kinds.value(historyKind);
    } else if (ranged) {
        request.periods = Periods::Range;
        request.first = parser.isSet(from) ? parseReportDate(parser.value(from)) : QDate();
        request.last = parser.isSet(to) ? parseReportDate(parser.value(to)) : today;
        if (!request.first.isValid() || !request.last.isValid())
            return invalid(
                QStringLiteral("--from and --to take dates as YYYY-MM-DD, and a range needs --from"));
        if (request.first > request.last)
            return invalid(QStringLiteral("--from %1 is after --to %2")
                               .arg(request.first.toString(Qt::ISODate), request.last.toString(Qt::ISODate)));
    }
    if (parser.isSet(openMetrics))
        request.output = Output::OpenMetrics;
    else if (parser.isSet(json))
        request.output = Output::Json;
    else if (parser.isSet(csv))
        request.output = Output::Csv;
    request.database = parser.isSet(database) ? parser.value(database) : defaultDatabase;
    return request;
}

} // namespace report
