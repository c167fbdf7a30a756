#include "treatment/ui/ReferralGrid.h"

ReferralGridModel::ReferralGridModel(ReferralKind kind, QObject *parent)
    : QAbstractTableModel(parent)
    , m_kind(kind)
{
}

void ReferralGridModel::setReferrals(const QList<Referral> &referrals)
{
    beginResetModel();
    m_referrals = referrals;
    m_typed = QList<bool>(referrals.size(), false);
    m_new = {};
    m_newBegun = false;
    endResetModel();
}

int ReferralGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_referrals.size()) + 1;
}

int ReferralGridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(referralTable(m_kind).columns.size());
}

QVariant ReferralGridModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    const Referral &shown = isNewRow(index.row()) ? m_new : m_referrals.at(index.row());
    return shown.values.value(index.column());
}

bool ReferralGridModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::EditRole)
        return false;
    Referral &target = isNewRow(index.row()) ? m_new : m_referrals[index.row()];
    if (isNewRow(index.row()))
        m_newBegun = true;
    else
        m_typed[index.row()] = true;
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
    if (row < 0 || row > m_referrals.size())
        return std::nullopt;
    if (isNewRow(row))
        return m_newBegun ? std::optional<Referral>(m_new) : std::nullopt;
    return m_referrals.at(row);
}

void ReferralGridModel::storeReferral(int row, const Referral &saved)
{
    if (isNewRow(row)) {
        beginInsertRows({}, row, row);
        m_referrals << saved;
        m_typed << false;
        m_new = {};
        m_newBegun = false;
        endInsertRows();
    } else if (row >= 0 && row < m_referrals.size()) {
        m_referrals[row] = saved;
        m_typed[row] = false;
    }
    emit dataChanged(index(row, 0), index(row + 1, columnCount() - 1));
}

void ReferralGridModel::removeReferral(int row)
{
    if (isNewRow(row)) {
        m_new = {};
        m_newBegun = false;
        emit dataChanged(index(row, 0), index(row, columnCount() - 1));
        return;
    }
    if (row < 0 || row >= m_referrals.size())
        return;
    beginRemoveRows({}, row, row);
    m_referrals.removeAt(row);
    m_typed.removeAt(row);
    endRemoveRows();
}
