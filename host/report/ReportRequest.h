// What netinfo-report was asked for, from its command line alone: the kind of
// periods, the output form and the ledger, or why it stops before reading.
#pragma once

#include "UsageReport.h"

#include <QDate>
#include <QString>
#include <QStringList>

namespace report {

enum class Output { Table, Json, Csv, OpenMetrics };
enum class Periods { Current, Range, History };

struct ReportRequest
{
    // Why the report stops before reading anything: help or version asked
    // for (message to stdout, exit 0), an option the parser rejects (exit 1),
    // options that do not go together or wrong values (exit 2).
    enum class Stop { None, Shown, Syntax, Invalid };

    Stop stop = Stop::None;
    QString message;
    int exitCode = 0;

    Output output = Output::Table;
    Periods periods = Periods::Current;
    QDate first; // Range: both valid, first <= last
    QDate last;
    HistoryKind history = HistoryKind::Days;
    QString database;
};

// arguments as main receives them, program name first. today is the default
// end of a range; defaultDatabase the ledger without --database.
ReportRequest parseReportRequest(
    const QStringList& arguments, const QDate& today, const QString& defaultDatabase);
// A day as --from/--to take it (YYYY-MM-DD); invalid otherwise.
QDate parseReportDate(const QString& text);

} // namespace report
