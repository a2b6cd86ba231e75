#include "status/statuscommon.h"

#include "dao/values.h"
#include "database/objectref.h"
#include "kernel/err.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "platform/clock.h"

#include <cmath>
#include <memory>

namespace status {

namespace {

[[noreturn]] void typeMismatch()
{
    Err.Raise(vbErrTypeMismatch, QStringLiteral("Type mismatch"));
}

} // namespace

Trap::Trap(Handler handler) : m_handler(std::move(handler))
{
}

bool Trap::operator()(const std::function<void()>& statement)
{
    while (!m_exited) {
        try {
            statement();
            return true;
        } catch (const VbError& e) {
            Err.Set(e);
            switch (m_handler(e)) {
            case Resume::Again:
                continue; // the handler asked a person first, so this cannot spin by itself
            case Resume::Next:
                return true;
            case Resume::Exit:
                m_exited = true;
                break;
            }
        }
    }
    return false;
}

QString errorHead(const QString& procedure)
{
    return errorbox::general(procedure, errorbox::StrBlank);
}

QString employeeRowSql(const QString& name)
{
    return QStringLiteral("SELECT * FROM EmployeeTable WHERE Name LIKE ") + dao::quoteLike(name);
}

QString stampedBy(const QString& name)
{
    return platform::Format(platform::Now(), QStringLiteral("yyyy-mm-dd hh:mm:ss")) + QStringLiteral(" by ") + name;
}

QString trackingMirrorSql(const QString& status, const QString& trackee)
{
    return QStringLiteral("Update EmployeeStatusTracking ") + QStringLiteral("set ") +
           QStringLiteral("TrackeeStatus = ") + dao::quote(status) + QStringLiteral(", ") +
           QStringLiteral("TrackeeLastUpdated = ") + dao::sqlNumber(platform::DateTimeNum(platform::Now())) +
           QStringLiteral(" ") + QStringLiteral("Where Trackee = ") + dao::quote(trackee);
}

std::optional<long long> statusTypeCode(const QString& status)
{
    const std::unique_ptr<dao::Recordset> rs =
        fnOpenSQL(QStringLiteral("Select * from StatusTypesTable WHERE Status = ") + dao::quote(status));
    std::optional<long long> code;
    if (rs->RecordCount() > 0) {
        // The engine's "=" ignores case; the upper-cased comparison decides.
        for (rs->MoveFirst(); !rs->isEOF(); rs->MoveNext()) {
            if (rs->Fields(QStringLiteral("Status")).Text().trimmed().toUpper() == status.toUpper()) {
                code = wholeFromText(rs->Fields(QStringLiteral("StatusCode")).Text());
            }
        }
    }
    rs->Close();
    return code;
}

void writeStatusFields(dao::Recordset& rs, const QString& status, const QString& changer)
{
    rs.Fields(QStringLiteral("StatusCode")) = QString::number(gRun.gintStatusCode).trimmed();
    rs.Fields(QStringLiteral("Status")) = status.trimmed();
    rs.Fields(QStringLiteral("LastModified")) = stampedBy(changer);
    if (status == QLatin1String("In") && gPerson.gblnAutoClearComments) {
        rs.Fields(QStringLiteral("DueBack")) = QString();
        gRun.gstrDueBack.clear();
        rs.Fields(QStringLiteral("Comments")) = QString();
        gRun.gstrComment.clear();
    }
}

void showStatusInTrayTip()
{
    ResumeNext([] { mainScreen().setTrayTip(fnOwnStatusTrayTip()); });
}

bool boolFromText(const QString& text)
{
    if (text.isEmpty() || text.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0) {
        return false;
    }
    if (text.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0) {
        return true;
    }
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (!ok) {
        typeMismatch();
    }
    return value != 0;
}

long long wholeFromText(const QString& text)
{
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (!ok || !std::isfinite(value)) {
        typeMismatch();
    }
    return dao::roundHalfEven(value);
}

} // namespace status
