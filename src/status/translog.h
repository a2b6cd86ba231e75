#pragma once
// The audit log of status changes (TransactionLogTable): one writer.

#include <QString>

void subUpdateTransactionLog(const QString& status, const QString& dueBack, const QString& comments,
                             const QString& name);
