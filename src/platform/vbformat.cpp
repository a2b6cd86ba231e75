// VB's Format for dates: the named forms, and the pattern letters the system's
// own patterns use (y m d h n s, AM/PM, quoted and \-escaped literals).

#include "platform/clock.h"

#include <QLocale>
#include <QStringList>
#include <cstring>

namespace platform {

namespace {

const QDate dayZero(1899, 12, 30);

// The locale's long time without the time-zone name that Qt adds, as VB shows it:
// "2:05:09 PM" in en_US, "14:05:09" in de_DE.
QString longTime(const QTime& time)
{
    const QString qtFormat = QLocale().timeFormat(QLocale::LongFormat);
    QString format;
    bool quoted = false;
    for (const QChar c : qtFormat) {
        if (c == QLatin1Char('\'')) {
            quoted = !quoted;
        }
        if (quoted || c != QLatin1Char('t')) {
            format.append(c);
        }
    }
    return QLocale().toString(time, format.simplified());
}

// The locale's short date with a four-digit year, as Windows shows short dates.
QString shortDate(const QDate& date)
{
    QString format = QLocale().dateFormat(QLocale::ShortFormat);
    if (!format.contains(QLatin1String("yyyy"))) {
        format.replace(QLatin1String("yy"), QLatin1String("yyyy"));
    }
    return QLocale().toString(date, format);
}

// Midnight shows the date alone, day 0 the time alone.
QString generalDate(const QDateTime& when)
{
    if (when.date() == dayZero) {
        return longTime(when.time());
    }
    if (when.time() == QTime(0, 0)) {
        return shortDate(when.date());
    }
    return shortDate(when.date()) + QLatin1Char(' ') + longTime(when.time());
}

// One piece of a pattern: a run of one letter (kind, count) or literal text (kind 0).
struct Token
{
    char kind;
    int count;
    QString text;
};

bool startsWith(const QString& s, qsizetype at, const char* word)
{
    return QStringView(s).mid(at).startsWith(QLatin1String(word), Qt::CaseInsensitive);
}

QList<Token> tokenize(const QString& pattern)
{
    QList<Token> tokens;
    for (qsizetype i = 0; i < pattern.size();) {
        const QChar c = pattern.at(i);
        const char letter = c.toLower().toLatin1();
        if (startsWith(pattern, i, "am/pm") || startsWith(pattern, i, "a/p")) {
            const qsizetype len = startsWith(pattern, i, "am/pm") ? 5 : 3;
            tokens.append({'a', int(len), pattern.mid(i, len)});
            i += len;
        } else if (letter != 0 && std::strchr("ymdhns", letter) != nullptr) {
            qsizetype end = i;
            while (end < pattern.size() && pattern.at(end).toLower() == c.toLower()) {
                ++end;
            }
            tokens.append({letter, int(end - i), QString()});
            i = end;
        } else if (c == QLatin1Char('\\') && i + 1 < pattern.size()) {
            tokens.append({0, 1, pattern.mid(i + 1, 1)});
            i += 2;
        } else if (c == QLatin1Char('"')) {
            const qsizetype close = pattern.indexOf(QLatin1Char('"'), i + 1);
            const qsizetype end = close < 0 ? pattern.size() : close;
            tokens.append({0, 1, pattern.mid(i + 1, end - i - 1)});
            i = end + 1;
        } else {
            tokens.append({0, 1, QString(c)});
            ++i;
        }
    }
    return tokens;
}

// "m" and "mm" mean minutes straight after an hour or straight before seconds.
bool isMinute(const QList<Token>& tokens, qsizetype at)
{
    for (qsizetype i = at - 1; i >= 0; --i) {
        if (tokens[i].kind) {
            if (tokens[i].kind == 'h') {
                return true;
            }
            break;
        }
    }
    for (qsizetype i = at + 1; i < tokens.size(); ++i) {
        if (tokens[i].kind) {
            return tokens[i].kind == 's';
        }
    }
    return false;
}

QString number(int value, int count)
{
    return count >= 2 ? QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0')) : QString::number(value);
}

QString ampm(const Token& t, int hour)
{
    const bool pm = hour >= 12;
    const bool lower = t.text.at(0).isLower();
    QString text = t.count == 5 ? QString::fromLatin1(pm ? "PM" : "AM") : QString::fromLatin1(pm ? "P" : "A");
    return lower ? text.toLower() : text;
}

QString render(const QDateTime& when, const QString& pattern)
{
    const QList<Token> tokens = tokenize(pattern);
    bool twelveHour = false;
    for (const Token& t : tokens) {
        twelveHour = twelveHour || t.kind == 'a';
    }
    const QDate d = when.date();
    const QTime tm = when.time();
    const QLocale locale;
    QString out;
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        const Token& t = tokens[i];
        switch (t.kind) {
        case 'y':
            out += t.count >= 3   ? QString::number(d.year())
                   : t.count == 2 ? number(d.year() % 100, 2)
                                  : QString::number(d.dayOfYear());
            break;
        case 'm':
            if (t.count <= 2 && isMinute(tokens, i)) {
                out += number(tm.minute(), t.count);
            } else if (t.count <= 2) {
                out += number(d.month(), t.count);
            } else {
                out += locale.monthName(d.month(), t.count == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
            }
            break;
        case 'd':
            out += t.count <= 2
                       ? number(d.day(), t.count)
                       : locale.dayName(d.dayOfWeek(), t.count == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
            break;
        case 'h': {
            const int hour = twelveHour ? (tm.hour() + 11) % 12 + 1 : tm.hour();
            out += number(hour, t.count);
            break;
        }
        case 'n':
            out += number(tm.minute(), t.count);
            break;
        case 's':
            out += number(tm.second(), t.count);
            break;
        case 'a':
            out += ampm(t, tm.hour());
            break;
        default:
            out += t.text;
        }
    }
    return out;
}

} // namespace

QString Format(const QDateTime& when, const QString& vbFormat)
{
    const QString form = vbFormat.trimmed();
    const auto is = [&form](const char* name) {
        return form.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
    };
    if (is("General Date")) {
        return generalDate(when);
    }
    if (is("Long Date")) {
        return QLocale().toString(when.date(), QLocale::LongFormat);
    }
    if (is("Short Date")) {
        return shortDate(when.date());
    }
    if (is("Long Time")) {
        return longTime(when.time());
    }
    if (is("Short Time")) {
        return when.time().toString(QStringLiteral("HH:mm"));
    }
    return render(when, vbFormat);
}

} // namespace platform
