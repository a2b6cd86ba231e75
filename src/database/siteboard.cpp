// The board as the site administration tool prints it.
#include "dao/dao.h"
#include "database/site.h"
#include "database/siterows.h"

#include <QSet>

namespace database {

namespace {

bool isEveryone(const QString& group)
{
    return group.trimmed().isEmpty() || group.trimmed().compare(QLatin1String("Everyone"), Qt::CaseInsensitive) == 0;
}

// The members of a group, case-folded, as names are compared without regard to case.
QSet<QString> membersOf(dao::Database& db, const QString& group)
{
    const QString stored = storedKey(db, QStringLiteral("GroupTable"), QStringLiteral("GroupName"), group.trimmed());
    if (stored.isEmpty())
        throw SiteError(QStringLiteral("There is no group named \"%1\".").arg(group.trimmed()));
    auto rs = db.OpenRecordset(
        QStringLiteral("SELECT EmployeeName FROM EmployeeGroupTable WHERE GroupName = %1").arg(dao::quote(stored)),
        dao::dbOpenSnapshot);
    QSet<QString> members;
    for (; !rs->isEOF(); rs->MoveNext())
        members.insert(rs->Fields(0).Text().toCaseFolded());
    return members;
}

} // namespace

Board readBoard(dao::Database& db, const QString& group)
{
    const bool everyone = isEveryone(group);
    const QSet<QString> members = everyone ? QSet<QString>() : membersOf(db, group);

    Board board;
    board.columns = QStringList{"Name", "Status", "Phone", "DueBack", "Comments", "LastModified"};
    for (const QString& field : db.FieldNames(QStringLiteral("EmployeeTable"))) {
        if (field.contains(QLatin1String("New_")) && !field.contains(QLatin1String("ReadOnly")))
            board.columns << field;
    }

    auto rs = db.OpenRecordset(QStringLiteral("SELECT * FROM EmployeeTable ORDER BY Name"), dao::dbOpenSnapshot);
    for (; !rs->isEOF(); rs->MoveNext()) {
        const QString name = rs->Fields(QStringLiteral("Name")).Text();
        if (name.startsWith(QLatin1Char('~')) || (!everyone && !members.contains(name.toCaseFolded())))
            continue;
        QStringList row;
        for (const QString& column : board.columns)
            row << rs->Fields(column).Text();
        board.rows.push_back(row);
    }
    return board;
}

} // namespace database
