#pragma once

#include "treatment/Referrals.h"

#include <QAbstractTableModel>

// One kind of referral of the patient, as its grid shows it, with the new row at the bottom.
class ReferralGridModel final : public QAbstractTableModel
{
public:
    ReferralGridModel(ReferralKind kind, QObject *parent = nullptr);

    ReferralKind kind() const { return m_kind; }
    void setReferrals(const QList<Referral> &referrals);
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    bool isNewRow(int row) const { return row == m_referrals.size(); }
    // The row as it stands, or nullopt for a new row nobody has typed into.
    std::optional<Referral> referral(int row) const;
    // Rows typed into (the new row, or changes to stored rows) and not saved.
    bool hasUnsavedTyping() const { return m_newBegun || m_typed.contains(true); }
    // The row after its save: stored, typing done; a saved new row is followed by a fresh one.
    void storeReferral(int row, const Referral &saved);
    // Takes a deleted row out of the grid; the other rows keep what was typed into them.
    void removeReferral(int row);

private:
    ReferralKind m_kind;
    QList<Referral> m_referrals;
    QList<bool> m_typed; // by stored row
    Referral m_new;
    bool m_newBegun = false;
};
