#include "board/columnlayout.h"

#include "dao/dao.h"
#include "start/err.h"
#include "start/globals.h"

namespace {

const QString kOrderSuffix = QStringLiteral("ColumnOrder"); // 11 characters
constexpr long long kDefaultWidthTwips = 1500;

} // namespace

ColumnLayout ColumnLayout::read(dao::Recordset& settingsRow)
{
    // Pass 1: how many columns, and the highest order given.
    long long count = 0;
    long long highest = 0;
    for (int i = 0; i < settingsRow.FieldCount(); ++i) {
        const dao::Field field = settingsRow.Fields(i);
        if (field.Name().contains(kOrderSuffix)) {
            ++count;
            if (!field.IsNull() && field.Value().toLongLong() > highest) {
                highest = field.Value().toLongLong();
            }
        }
    }

    ColumnLayout layout;
    layout.columns = QStringList(qsizetype(count + 1), QString());
    layout.widths = QList<long long>(qsizetype(count + 1), 0);
    // Pass 2: each column into the slot its order names.
    for (int i = 0; i < settingsRow.FieldCount(); ++i) {
        const dao::Field field = settingsRow.Fields(i);
        if (!field.Name().contains(kOrderSuffix)) {
            continue;
        }
        long long slot = 0;
        if (field.IsNull()) {
            slot = ++highest - 1;
        } else {
            slot = field.Value().toLongLong() - 1;
        }
        if (slot < 0) {
            continue; // an order below 1 has no slot
        }
        if (slot >= layout.columns.size()) {
            layout.columns.resize(qsizetype(slot + 1));
            layout.widths.resize(qsizetype(slot + 1));
        }
        const QString base = field.Name().chopped(kOrderSuffix.size());
        layout.columns[slot] = base;
        if (base == QLatin1String("Name")) {
            gintNameColumn = slot;
        }
        ResumeNext([&] {
            const dao::Field width = settingsRow.Fields(base + QStringLiteral("ColumnWidth"));
            layout.widths[slot] = width.IsNull() ? kDefaultWidthTwips : width.Value().toLongLong();
        });
    }
    return layout;
}
