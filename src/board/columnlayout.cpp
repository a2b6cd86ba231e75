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

QList<ColumnLayout::Header> ColumnLayout::headers() const
{
    QList<Header> result;
    const auto add = [&](const QString& caption) {
        const qsizetype slot = result.size();
        result << Header{caption, slot < widths.size() ? std::optional(Twips(widths.at(slot))) : std::nullopt};
    };
    for (int i = 0; i < columns.size(); ++i) {
        if (i == 0) {
            add(QStringLiteral("Status"));
        }
        const QString name = columns.at(i).trimmed();
        if (name.contains(QLatin1String("New_"))) {
            add(name.mid(4));
        } else if (!name.isEmpty() && name != QLatin1String("Status")) {
            add(name);
        }
    }
    return result;
}

namespace columns {

int fillColumn(const QStringList& captions, int lastShown)
{
    const int comments = int(captions.indexOf(QStringLiteral("Comments")));
    return comments >= 0 ? comments : lastShown;
}

int fillWidth(int ownWidth, int listWidth, int othersWidth)
{
    return std::max(ownWidth, listWidth - othersWidth);
}

std::optional<int> statusPlace(const QVariant& order, int columnCount)
{
    if (order.isNull()) {
        return std::nullopt;
    }
    const long long place = order.toLongLong();
    return place >= 1 && place <= columnCount ? std::optional(int(place)) : std::nullopt;
}

Sort sortColumn(const QStringList& captions, const QString& savedCaption, long long savedKey)
{
    const qsizetype found = captions.indexOf(savedCaption);
    if (found >= 0) {
        return {found, true};
    }
    return {savedKey > captions.size() - 1 ? 0 : savedKey, false};
}

long long orderAfterClick(long long clicked, long long lastClicked, long long order)
{
    if (clicked != lastClicked) {
        return order;
    }
    return order == 0 ? 1 : 0;
}

bool findMatches(const QString& value, const QString& typed)
{
    return value.left(typed.size()).toUpper() == typed.toUpper();
}

Snapshot Snapshot::take(int rows, const QList<long long>& positions, const QList<long long>& widths)
{
    Snapshot snapshot;
    for (int i = 1; i <= rows - 1 && i <= positions.size(); ++i) {
        snapshot.positions.resize(i + 1);
        snapshot.widths.resize(i + 1);
        snapshot.positions[i] = positions.at(i - 1);
        snapshot.widths[i] = widths.value(i - 1);
    }
    return snapshot;
}

bool Snapshot::differs(int rows, const QList<long long>& nowPositions, const QList<long long>& nowWidths) const
{
    const auto differ = [rows](const QList<long long>& then, const QList<long long>& now) {
        for (int i = 1; i <= rows - 1; ++i) {
            if (i > now.size() || i >= then.size()) {
                return false;
            }
            if (now.at(i - 1) != then.at(i)) {
                return true;
            }
        }
        return false;
    };
    return differ(positions, nowPositions) || differ(widths, nowWidths);
}

} // namespace columns
