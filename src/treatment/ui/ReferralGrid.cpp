#include "treatment/ui/ReferralGrid.h"

ReferralGridModel::ReferralGridModel(ReferralKind kind, QObject *parent)
    : StoredRowsModel<Referral>(parent)
    , m_kind(kind)
{
}

int ReferralGridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(referralTable(m_kind).columns.size());
}

QVariant ReferralGridModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    return shownRow(index.row()).values.value(index.column());
}

bool ReferralGridModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::EditRole)
        return false;
    Referral &target = typedRow(index.row());
    target.values.resize(columnCount());
    target.values[index.column()] = value.toString();
    emit dataChanged(index, index);
    return true;
}

Qt::ItemFlags ReferralGridModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable : Qt::NoItemFlags;
}

QVariant ReferralGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Horizontal)
        return referralTable(m_kind).columns.value(section).caption;
    return isNewRow(section) ? QStringLiteral("*") : QString();
}

std::optional<Referral> ReferralGridModel::referral(int row) const
{
    if (isNewRow(row))
        return isTyped(row) ? std::optional<Referral>(shownRow(row)) : std::nullopt;
    if (!isStoredRow(row))
        return std::nullopt;
    return shownRow(row);
}
