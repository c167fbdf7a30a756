#pragma once

#include "base/ui/StoredRowsModel.h"
#include "treatment/Referrals.h"

#include <optional>

// One kind of referral of the patient, as its grid shows it, with the new row at the bottom.
class ReferralGridModel final : public StoredRowsModel<Referral>
{
public:
    ReferralGridModel(ReferralKind kind, QObject *parent = nullptr);

    ReferralKind kind() const { return m_kind; }
    void setReferrals(const QList<Referral> &referrals) { resetRows(referrals); }
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // The row as it stands, or nullopt for a new row nobody has typed into.
    std::optional<Referral> referral(int row) const;
    // The row after its save: stored, typing done; a saved new row is followed by a fresh one.
    void storeReferral(int row, const Referral &saved) { storeRow(row, saved); }
    // Takes a deleted row out of the grid; the other rows keep what was typed into them.
    void removeReferral(int row) { dropRow(row); }

private:
    ReferralKind m_kind;
};
