// Placeholder until the quoting helper lands.
#include "dao/quote.h"

namespace dao {

QString quote(const QString& value)
{
    QString v = value;
    v.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + v + QLatin1Char('"');
}

QString quoteLike(const QString& value)
{
    return quote(value);
}

QString sqlNumber(double value)
{
    return QString::number(value, 'g', 17);
}

} // namespace dao
