#pragma once

#include "base/ui/OneWindow.h"
#include "patients/PatientCard.h"

#include <QHash>
#include <QPointer>
#include <QWidget>

class ChartWidget;
class QGroupBox;
class QLineEdit;
class QPushButton;
class ViewHelp;

// "Картон": registering, correcting or deleting one patient, with the personal data above and
// the medical notes and the dental chart below. Opened new ("Картон - Нов") or for a patient
// found by name ("Картон - Корекция", with the service history beside it). The card keeps its
// own mode: "New", "Edit", or " " after a number that failed; the run-wide CardMode follows it.
// There is one card: opening it again brings it forward, or, for another patient, replaces it
// once its unsaved typing is given up.
class KartonAdd final : public QWidget, public OneWindow<KartonAdd>
{
    Q_OBJECT
    friend class OneWindow<KartonAdd>;

public:
    // The card in `mode`; for a mode other than "New" the patient is the one found by name
    // (FoundName, FoundEGN).
    KartonAdd(const QString &mode, const QString &foundName, const QString &foundEgn, QWidget *parent);
    // The card in the run-wide CardMode as it stands.
    explicit KartonAdd(const QString &foundName = {}, const QString &foundEgn = {}, QWidget *parent = nullptr);
    ~KartonAdd() override;

    // The registration command: an empty new card. nullptr when the open card was kept.
    static KartonAdd *openNew(QWidget *parent = nullptr);
    // The correction search's choice: the patient's card and history. nullptr when the open
    // card was kept.
    static KartonAdd *openForCorrection(const QString &foundName, const QString &foundEgn, QWidget *parent = nullptr);
    // The card on screen, or nullptr.
    static KartonAdd *openCard();

    QString CardEGN() const { return m_cardEgn; }
    QString CardName() const { return m_cardName; }
    QString mode() const { return m_mode; }
    ViewHelp *history() const;
    // Whether anything on the card differs from what is stored (or, for a new card, was typed).
    bool hasUnsavedTyping() const;

signals:
    // A new card was stored and closed: the treatment window is to open on that patient.
    void openTreatment(const QString &egn, const QString &name);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    QGroupBox *buildPersonalData();
    QGroupBox *buildMedicalData();
    QWidget *buildButtons();
    static KartonAdd *open(const QString &mode, const QString &foundName, const QString &foundEgn, QWidget *parent);
    // Whether the open card may give way to the card asked for; false keeps it.
    bool givesWayTo(const QString &mode, const QString &foundEgn);
    void setMode(const QString &mode);
    void markStored();
    QLineEdit *makeInput(const QString &objectName, const QString &field, int limit, const QString &style);
    void chainTabOrder();
    void load(const QString &foundName, const QString &foundEgn);
    void showCard(const patientcard::CardData &card);
    patientcard::CardData cardFromInputs() const;

    void inputLeft(QLineEdit *input);
    void beginNumberEntry();
    void numberEntryLeft();
    void failedNumber(const patientcard::EgnEntry &entry);
    void switchToStoredPatient(const patientcard::EgnEntry &entry);
    void finishNumberEntry(const patientcard::EgnEntry &entry);
    void postCodeLeft();
    void startNewRecord(bool discardTyped);

    void saveCard();
    void saveNewCard(const patientcard::CardData &card);
    void saveChanges(const patientcard::CardData &card);
    void deleteCard();
    void closeCard();
    void closeHistory();

    QHash<QString, QLineEdit *> m_inputsByField; // Pacients field -> input
    QLineEdit *m_names = nullptr;                // Text2
    QLineEdit *m_postCode = nullptr;             // Text6
    QLineEdit *m_healthBook = nullptr;           // Text12
    QLineEdit *m_quarter = nullptr;              // Text13
    QLineEdit *m_street = nullptr;               // Text14
    QLineEdit *m_storedEgn = nullptr;            // Text3
    QLineEdit *m_egnEntry = nullptr;             // Text11
    QList<QLineEdit *> m_txtFields;              // the personal inputs of the txtFields array
    QList<QWidget *> m_tabOrder;
    ChartWidget *m_chart = nullptr;
    QPushButton *m_add = nullptr;
    QPushButton *m_delete = nullptr;
    QPushButton *m_update = nullptr;
    QPushButton *m_close = nullptr;
    QPointer<ViewHelp> m_history;

    patientcard::CardData m_card;   // the stored rows shown, ids 0 for a card not stored yet
    patientcard::CardData m_stored; // the inputs as they were when last loaded or saved
    QString m_mode;
    QString m_cardEgn;
    QString m_cardName;
    QString m_postRzok;
    QString m_postZr;
    QString m_savedNewEgn; // the patient this card stored as new, for the treatment window
    QString m_savedNewName;
    bool m_closing = false;
    bool m_checkingNumber = false;
    bool m_typingGivenUp = false; // asked already, or the patient is gone
    bool m_replaced = false;      // gives way to another card: the search stays open for it
};
