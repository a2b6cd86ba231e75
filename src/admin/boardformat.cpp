// The board of `veskor-admin board` as text, CSV or JSON.
#include "admin/commands.h"
#include "database/site.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

namespace admin {

namespace {

QString header(const QString& column)
{
    return column.startsWith(QLatin1String("New_")) ? database::extraColumnCaption(column) : column;
}

// RFC 4180: a field with a comma, quote or line break goes in quotes, its quotes doubled.
QString csvField(const QString& value)
{
    if (!value.contains(QLatin1Char(',')) && !value.contains(QLatin1Char('"')) && !value.contains(QLatin1Char('\n')) &&
        !value.contains(QLatin1Char('\r')))
        return value;
    QString quoted = value;
    quoted.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

QString csvLine(const QStringList& fields)
{
    QStringList quoted;
    for (const QString& field : fields)
        quoted << csvField(field);
    return quoted.join(QLatin1Char(',')) + QLatin1Char('\n');
}

} // namespace

QString boardAsText(const database::Board& board)
{
    QStringList heads;
    std::vector<qsizetype> widths;
    for (const QString& column : board.columns) {
        heads << header(column);
        widths.push_back(heads.last().size());
    }
    for (const QStringList& row : board.rows) {
        for (size_t i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], row[qsizetype(i)].size());
    }
    auto line = [&](const QStringList& cells) {
        QString text;
        for (size_t i = 0; i < widths.size(); ++i)
            text +=
                QString(cells[qsizetype(i)]).replace(QLatin1Char('\n'), QLatin1Char(' ')).leftJustified(widths[i] + 2);
        return text.trimmed() + QLatin1Char('\n');
    };
    QStringList rules;
    for (qsizetype width : widths)
        rules << QString(width, QLatin1Char('-'));
    QString text = line(heads) + line(rules);
    for (const QStringList& row : board.rows)
        text += line(row);
    return text;
}

QString boardAsCsv(const database::Board& board)
{
    QString text = csvLine(board.columns);
    for (const QStringList& row : board.rows)
        text += csvLine(row);
    return text;
}

QString boardAsJson(const database::Board& board, const QString& group)
{
    QJsonArray rows;
    for (const QStringList& row : board.rows) {
        QJsonObject object;
        for (qsizetype i = 0; i < board.columns.size(); ++i)
            object.insert(board.columns[i], row[i]);
        rows.append(object);
    }
    const QJsonObject document{
        {"group", group}, {"columns", QJsonArray::fromStringList(board.columns)}, {"rows", rows}};
    return QString::fromUtf8(QJsonDocument(document).toJson(QJsonDocument::Indented));
}

} // namespace admin
