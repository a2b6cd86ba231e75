#pragma once
// What every failure of a run carries, as VB's Err object shows it: a number and
// a description. The data engine's errors (dao::JetError) and the language's own
// run-time errors (RunTimeError: 13 type mismatch, 91 object not set...) are both
// one. A handler that takes any error, as VB's "On Error" does, catches VbError;
// one that answers only the engine catches dao::JetError.

#include <QString>
#include <stdexcept>

class VbError : public std::runtime_error
{
public:
    VbError(int number, const QString& description)
        : std::runtime_error(QStringLiteral("Error %1: %2").arg(number).arg(description).toStdString()),
          m_number(number), m_description(description)
    {
    }

    int number() const
    {
        return m_number;
    }
    const QString& description() const
    {
        return m_description;
    }

private:
    int m_number;
    QString m_description;
};
