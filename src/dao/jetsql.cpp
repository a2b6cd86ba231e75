// Placeholder until the translator lands: passes the text through.
#include "dao/jetsql.h"

namespace dao {

Translation translateJet(const QString& jetSql)
{
    Translation t;
    t.sql = jetSql;
    return t;
}

bool jetLike(const QString& text, const QString& pattern)
{
    return text.compare(pattern, Qt::CaseInsensitive) == 0;
}

} // namespace dao
