// The report's statement and lines.
#include "reports/modprint.h"

#include "dao/quote.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "kernel/globals.h"
#include "platform/clock.h"

#include <memory>

namespace reports {

namespace {

struct Column
{
    const char* field;
    const char* heading;
    int width;
};

// The fields in print order, with their headings and widths.
const Column kStatusColumns[] = {
    {"Name", "Name", 29},       {"Status", "Status", 20},     {"Phone", "Phone", 20},
    {"DueBack", "DueBack", 19}, {"Comments", "Comments", 19}, {"LastModified", "Last Modified", 50},
};
const Column kPhoneColumns[] = {{"Name", "Name", 40}, {"Phone", "Phone", 40}};

template <typename Text> QString fixedLine(ReportType type, Text textOf)
{
    QString line;
    const auto append = [&](const auto& columns) {
        for (const Column& column : columns) {
            line += fnField(textOf(column), column.width);
        }
    };
    if (type == StatusList) {
        append(kStatusColumns);
    } else {
        append(kPhoneColumns);
    }
    return line;
}

} // namespace

QString fnField(const QString& text, int width)
{
    return text.left(width).leftJustified(width, QLatin1Char(' '));
}

QString fnReportSql(ReportType type, ReportSort sort, const QString& group)
{
    const bool phone = type == PhoneList;
    const QString sortWord = !phone && sort == SortByStatus ? QStringLiteral("Status") : QStringLiteral("Name");
    QString sql = phone ? QStringLiteral("SELECT EmployeeTable.Name, EmployeeTable.Phone ")
                        : QStringLiteral("SELECT EmployeeTable.Status, EmployeeTable.Name, EmployeeTable.Phone, "
                                         "EmployeeTable.DueBack, EmployeeTable.Comments, EmployeeTable.LastModified ");
    if (group == QLatin1String("Everyone")) {
        return sql + QStringLiteral("FROM EmployeeTable ORDER BY ") + sortWord;
    }
    return sql +
           QStringLiteral("FROM EmployeeTable, EmployeeGroupTable WHERE EmployeeTable.Name LIKE "
                          "EmployeeGroupTable.EmployeeName AND EmployeeGroupTable.GroupName LIKE ") +
           dao::quoteLike(group) + QStringLiteral(" ORDER BY EmployeeTable.") + sortWord;
}

QStringList fnReportLines(ReportType type, ReportSort sort, const QString& group)
{
    subOpenDatabase();
    QStringList lines;
    try {
        std::unique_ptr<dao::Recordset> rs = fnOpenSQL(fnReportSql(type, sort, group));
        for (; !rs->isEOF(); rs->MoveNext()) {
            lines << fixedLine(type, [&](const Column& c) { return rs->Fields(QLatin1String(c.field)).Text(); });
        }
        rs->Close();
    } catch (...) {
        subCloseDatabase();
        throw;
    }
    subCloseDatabase();
    if (lines.isEmpty()) {
        return lines;
    }
    const QString title = type == StatusList ? QStringLiteral(" Status Listing (") : QStringLiteral(" Phone List (");
    const QString heading = gRun.gstrProgramTitle + title + group + QStringLiteral(" Group) ") +
                            platform::Format(platform::Now(), QStringLiteral("General Date"));
    lines.prepend(fixedLine(type, [](const Column& c) { return QString::fromLatin1(c.heading); }));
    lines.prepend(QString());
    lines.prepend(heading);
    return lines;
}

} // namespace reports
