#pragma once

#include "base/ui/OneWindow.h"
#include "patients/DateLists.h"

#include <QString>
#include <QWidget>

#include <array>

class QComboBox;
class QLineEdit;
class QPushButton;

// "Условия за търсене": lists of patients born, registered or "visited" in a period. The address
// and medical inputs are kept as typed and read by no search, as the practice's form has them.
class SeekDati final : public QWidget, public OneWindow<SeekDati>
{
    Q_OBJECT
    friend class OneWindow<SeekDati>;

public:
    explicit SeekDati(QWidget *parent = nullptr);

    // Shows the one search window, made on first use.
    static SeekDati *open(QWidget *parent = nullptr);

    QString SettlementText() const { return m_settlement; }
    QString AddressText() const { return m_address; }
    QString BloodGroupText() const { return m_bloodGroup; }
    QString AllergyText() const { return m_allergy; }

signals:
    // A row passed its checks: the list is to be printed. The window closes once the search ends
    // with a list shown.
    void listRequested(const datelists::ListRequest &request);

public slots:
    void seek();
    void cancel();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct DateRow
    {
        QLineEdit *from;
        QLineEdit *to;
    };

    QWidget *buildDates();
    QWidget *buildCombos(const QString &frame, const QString &tip, const QString &firstName, const QString &firstLabel,
                         const QString &secondName, const QString &secondLabel);
    void watchCombo(QComboBox *combo, QString *value);
    void dateRowEntered(int row);
    int rowOf(QObject *box) const;

    std::array<DateRow, 3> m_rows{};
    QPushButton *m_seek = nullptr;
    QPushButton *m_cancel = nullptr;
    QString m_settlement;
    QString m_address;
    QString m_bloodGroup;
    QString m_allergy;
};
