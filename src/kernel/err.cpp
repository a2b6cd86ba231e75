#include "kernel/err.h"

ErrObject Err;

void ErrObject::Clear()
{
    Number = 0;
    Description.clear();
}

void ErrObject::Set(const VbError& e)
{
    Number = e.number();
    Description = e.description();
}

void ErrObject::Raise(long long number, const QString& description)
{
    const QString text = description.isEmpty() ? dao::jetErrorText(int(number)) : description;
    Number = number;
    Description = text;
    throw RunTimeError(int(number), text);
}

void raiseObjectNotSet()
{
    Err.Raise(vbErrObjectNotSet, QStringLiteral("Object variable or With block variable not set"));
}

bool testOrFail(const std::function<bool()>& test)
{
    bool result = true;
    ResumeNext([&] { result = test(); });
    return result;
}

bool ResumeNext(const std::function<void()>& fn)
{
    try {
        fn();
        return true;
    } catch (const VbError& e) {
        Err.Set(e);
        return false;
    }
}
