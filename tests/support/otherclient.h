#pragma once
// Another client in a transaction on a site's file ("BEGIN IMMEDIATE" lets others
// read but not write, "BEGIN EXCLUSIVE" lets no one in), with a short busy wait
// for the connections opened meanwhile. The transaction ends, rolled back, with
// the object.

#include "dao/dao.h"
#include "tempsite.h"

#include <QFile>
#include <sqlite3.h>

class OtherClient
{
public:
    explicit OtherClient(const TempSite& site) : m_busy(dao::DBEngine::busyTimeoutMs())
    {
        dao::DBEngine::setBusyTimeoutMs(50);
        sqlite3_open_v2(QFile::encodeName(site.dbPath()).constData(), &m_db, SQLITE_OPEN_READWRITE, nullptr);
    }
    OtherClient(const OtherClient&) = delete;
    OtherClient& operator=(const OtherClient&) = delete;
    bool begin(const char* statements)
    {
        return sqlite3_exec(m_db, statements, nullptr, nullptr, nullptr) == SQLITE_OK;
    }
    ~OtherClient()
    {
        sqlite3_close(m_db); // rolls the transaction back
        dao::DBEngine::setBusyTimeoutMs(m_busy);
    }

private:
    int m_busy;
    sqlite3* m_db = nullptr;
};
