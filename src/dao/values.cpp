#include "dao/values.h"

#include <QByteArray>
#include <cmath>
#include <sqlite3.h>

namespace dao {

namespace {

bool isOneOf(const QByteArray& word, std::initializer_list<const char*> names)
{
    for (const char* name : names) {
        if (word == name)
            return true;
    }
    return false;
}

bool containsAny(const QByteArray& word, std::initializer_list<const char*> parts)
{
    for (const char* part : parts) {
        if (word.contains(part))
            return true;
    }
    return false;
}

QString textOf(sqlite3_stmt* stmt, int column)
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt, column));
    return QString::fromUtf8(text, sqlite3_column_bytes(stmt, column));
}

// Text as a yes/no answer, the words Jet and VB accept; false when it is none.
bool textToBool(const QString& text, bool* ok)
{
    const QString t = text.trimmed();
    *ok = true;
    for (const char* yes : {"true", "yes", "on"}) {
        if (t.compare(QLatin1String(yes), Qt::CaseInsensitive) == 0)
            return true;
    }
    for (const char* no : {"false", "no", "off"}) {
        if (t.compare(QLatin1String(no), Qt::CaseInsensitive) == 0)
            return false;
    }
    const double number = t.toDouble(ok);
    return *ok && number != 0;
}

bool isNumber(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Double:
    case QMetaType::Float:
        return true;
    default:
        return false;
    }
}

bool isWhole(double v)
{
    return std::isfinite(v) && std::trunc(v) == v && std::fabs(v) < 9.0e18;
}

[[noreturn]] void conversionFailed(const QVariant& value)
{
    raiseJetError(errConversion, value.toString());
}

qint64 toLong(const QVariant& value)
{
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? 1 : 0;
    bool ok = false;
    const qint64 whole = value.toString().trimmed().toLongLong(&ok);
    if (ok)
        return whole;
    const double number = isNumber(value) ? value.toDouble() : value.toString().trimmed().toDouble(&ok);
    if ((!ok && !isNumber(value)) || !std::isfinite(number) || std::fabs(number) >= 9.2e18)
        conversionFailed(value);
    return roundHalfEven(number);
}

double toDouble(const QVariant& value)
{
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? 1.0 : 0.0;
    if (isNumber(value))
        return value.toDouble();
    bool ok = false;
    const double number = value.toString().trimmed().toDouble(&ok);
    if (!ok)
        conversionFailed(value);
    return number;
}

bool toBool(const QVariant& value)
{
    if (value.typeId() == QMetaType::Bool)
        return value.toBool();
    if (isNumber(value))
        return value.toDouble() != 0;
    bool ok = false;
    const bool answer = textToBool(value.toString(), &ok);
    if (!ok)
        conversionFailed(value);
    return answer;
}

QString cstrDouble(double v)
{
    QString text = QString::number(v, 'g', 15);
    text.replace(QLatin1Char('e'), QLatin1Char('E'));
    return text;
}

QString trimSpaces(const QString& text)
{
    qsizetype first = 0;
    qsizetype last = text.size();
    while (first < last && text.at(first) == QLatin1Char(' '))
        ++first;
    while (last > first && text.at(last - 1) == QLatin1Char(' '))
        --last;
    return (first == 0 && last == text.size()) ? text : text.mid(first, last - first);
}

} // namespace

FieldType fieldTypeFromDeclared(const char* declaredType)
{
    if (!declaredType || !*declaredType)
        return FieldType::Other;
    QByteArray word = QByteArray(declaredType).toUpper();
    const qsizetype paren = word.indexOf('(');
    if (paren >= 0)
        word.truncate(paren);
    word = word.trimmed();
    if (isOneOf(word, {"BIT", "YESNO", "LOGICAL", "LOGICAL1", "BOOLEAN", "BOOL"}))
        return FieldType::Boolean;
    // Text first: LONGTEXT is text, not a Long.
    if (containsAny(word, {"TEXT", "CHAR", "MEMO", "CLOB", "STRING"}))
        return FieldType::Text;
    if (containsAny(word, {"INT", "LONG", "COUNTER", "AUTOINCREMENT", "BYTE", "SHORT"}))
        return FieldType::Long;
    if (containsAny(word, {"DOUBLE", "REAL", "FLOAT", "SINGLE", "CURRENCY", "MONEY", "NUMERIC", "DECIMAL", "NUMBER"}))
        return FieldType::Double;
    return FieldType::Other;
}

QVariant readColumn(sqlite3_stmt* stmt, int column, FieldType type)
{
    const int storage = sqlite3_column_type(stmt, column);
    switch (storage) {
    case SQLITE_NULL:
        return QVariant();
    case SQLITE_BLOB:
        return QByteArray(static_cast<const char*>(sqlite3_column_blob(stmt, column)),
                          sqlite3_column_bytes(stmt, column));
    case SQLITE_INTEGER: {
        const qint64 v = sqlite3_column_int64(stmt, column);
        if (type == FieldType::Boolean)
            return QVariant(v != 0);
        if (type == FieldType::Double)
            return QVariant(double(v));
        if (type == FieldType::Text)
            return textOf(stmt, column);
        return QVariant(qlonglong(v));
    }
    case SQLITE_FLOAT: {
        const double v = sqlite3_column_double(stmt, column);
        if (type == FieldType::Boolean)
            return QVariant(v != 0);
        if (type == FieldType::Long && isWhole(v))
            return QVariant(qlonglong(v));
        if (type == FieldType::Text)
            return textOf(stmt, column);
        return QVariant(v);
    }
    default: {
        QString text = textOf(stmt, column);
        if (type == FieldType::Boolean) {
            bool ok = false;
            const bool answer = textToBool(text, &ok);
            if (ok)
                return QVariant(answer);
        }
        return text;
    }
    }
}

QVariant convertForField(const QVariant& value, FieldType type)
{
    if (value.isNull())
        return QVariant();
    switch (type) {
    case FieldType::Boolean:
        return QVariant(toBool(value));
    case FieldType::Long:
        return QVariant(qlonglong(toLong(value)));
    case FieldType::Double:
        return QVariant(toDouble(value));
    case FieldType::Text:
        return value.typeId() == QMetaType::QString ? value : QVariant(vbText(value));
    case FieldType::Other:
        break;
    }
    return value;
}

void bindValue(sqlite3_stmt* stmt, int parameter, const QVariant& value)
{
    if (value.isNull()) {
        sqlite3_bind_null(stmt, parameter);
        return;
    }
    switch (value.typeId()) {
    case QMetaType::Bool:
        sqlite3_bind_int64(stmt, parameter, value.toBool() ? 1 : 0);
        return;
    case QMetaType::Double:
    case QMetaType::Float:
        sqlite3_bind_double(stmt, parameter, value.toDouble());
        return;
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        sqlite3_bind_blob64(stmt, parameter, bytes.constData(), sqlite3_uint64(bytes.size()), SQLITE_TRANSIENT);
        return;
    }
    default:
        break;
    }
    if (isNumber(value)) {
        sqlite3_bind_int64(stmt, parameter, value.toLongLong());
        return;
    }
    const QByteArray text = value.toString().toUtf8();
    sqlite3_bind_text64(stmt, parameter, text.constData(), sqlite3_uint64(text.size()), SQLITE_TRANSIENT, SQLITE_UTF8);
}

QString vbText(const QVariant& value)
{
    if (value.isNull())
        return QString();
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    case QMetaType::Double:
    case QMetaType::Float:
        return cstrDouble(value.toDouble());
    default:
        return trimSpaces(value.toString());
    }
}

qint64 roundHalfEven(double number)
{
    return qint64(std::nearbyint(number)); // the default rounding mode sends halves to even
}

} // namespace dao
