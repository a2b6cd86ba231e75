#pragma once
// The printed lists of one group, as lines of text: the status list (every
// column) and the phone list (name and phone). Each line is built of fixed
// fields, cut or padded to their widths, so that a fixed-pitch font lines the
// columns up. No widgets and no printer here: frmPrint sends the lines to a
// printer or a file (reportpage.h).

#include <QString>
#include <QStringList>

namespace reports {

enum ReportType : int
{
    StatusList = 0,
    PhoneList = 1
};

enum ReportSort : int
{
    SortByName = 0,
    SortByStatus = 1 // the status list only
};

// The text left-aligned in a field of width characters: cut when longer, padded with blanks when shorter.
QString fnField(const QString& text, int width);

// The statement that reads the report's rows for a group ("Everyone" is the whole table).
QString fnReportSql(ReportType type, ReportSort sort, const QString& group);

// The report's lines: the heading with the present date and time ("General Date"),
// an empty line, the column heading and one line a row. Empty when the group has
// no members. Opens and closes the database around its read; an error of the
// engine goes up to the caller.
QStringList fnReportLines(ReportType type, ReportSort sort, const QString& group);

} // namespace reports
