#include "board/columnlayout.h"

#include "dao/dao.h"
#include "kernel/err.h"
#include "kernel/globals.h"

#include <algorithm>
#include <optional>

namespace {

const QString kOrderSuffix = QStringLiteral("ColumnOrder"); // 11 characters
constexpr long long kDefaultWidthTwips = 1500;

} // namespace

ColumnLayout ColumnLayout::read(dao::Recordset& settingsRow)
{
    // Pass 1: how many columns. An order beyond that number (a damaged row) is
    // taken as no order at all, so that no slot lies past the columns there are.
    QList<int> orderFields;
    for (int i = 0; i < settingsRow.FieldCount(); ++i) {
        if (settingsRow.Fields(i).Name().contains(kOrderSuffix)) {
            orderFields << i;
        }
    }
    const long long count = orderFields.size();
    const auto orderOf = [&](const dao::Field& field) -> std::optional<long long> {
        if (field.IsNull()) {
            return std::nullopt;
        }
        const long long order = field.Value().toLongLong();
        return order <= count ? std::optional(order) : std::nullopt;
    };
    long long highest = 0;
    for (int i : orderFields) {
        highest = std::max(highest, orderOf(settingsRow.Fields(i)).value_or(0));
    }

    ColumnLayout layout;
    layout.columns = QStringList(qsizetype(count + 1), QString());
    layout.widths = QList<long long>(qsizetype(count + 1), 0);
    // Pass 2: each column into the slot its order names; one without an order goes after all others.
    for (int i : orderFields) {
        const dao::Field field = settingsRow.Fields(i);
        const std::optional<long long> order = orderOf(field);
        const long long slot = order ? *order - 1 : ++highest - 1;
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
            gBoard.gintNameColumn = slot;
        }
        ResumeNext([&] {
            const dao::Field width = settingsRow.Fields(base + QStringLiteral("ColumnWidth"));
            layout.widths[slot] = width.IsNull() ? kDefaultWidthTwips : width.Value().toLongLong();
        });
    }
    return layout;
}
