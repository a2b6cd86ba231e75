// The quoting helper: the one way a value enters a statement.
#include "dao/quote.h"

#include <charconv>
#include <cmath>

namespace dao {

QString quote(const QString& value)
{
    QString out;
    out.reserve(value.size() + 2);
    out += u'"';
    for (const QChar c : value) {
        if (c == u'"')
            out += u'"';
        out += c;
    }
    out += u'"';
    return out;
}

QString quoteLike(const QString& value)
{
    QString pattern;
    pattern.reserve(value.size() + 8);
    for (const QChar c : value) {
        if (c == u'*' || c == u'?' || c == u'#' || c == u'[') {
            pattern += u'[';
            pattern += c;
            pattern += u']';
        } else {
            pattern += c;
        }
    }
    return quote(pattern);
}

QString sqlNumber(double value)
{
    // SQL has no literal for these; 9e999 reads back as infinity in SQLite.
    if (std::isnan(value))
        return QStringLiteral("NULL");
    if (std::isinf(value))
        return value > 0 ? QStringLiteral("9e999") : QStringLiteral("-9e999");
    // to_chars ignores the locale and gives the shortest text that reads back
    // as the same double, in plain digits unless an exponent is shorter.
    char buf[32];
    const auto result = std::to_chars(buf, buf + sizeof buf, value);
    return QString::fromLatin1(buf, result.ptr - buf);
}

} // namespace dao
