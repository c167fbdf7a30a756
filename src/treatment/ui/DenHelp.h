#pragma once

#include "treatment/SheetNumbers.h"

#include <QDialog>
#include <QPointer>

class ChartView;
class QCheckBox;
class QLabel;
class QPushButton;
class ServiceGridModel;
class ServiceGridView;
struct ServiceContext;
struct ServiceLine;
class PathWay;

// The treatment window: one patient's data and chart, read-only, over the grid of every service
// recorded for the patient, where new services are typed by short code. There is one window;
// each patient loaded into it opens a new ambulatory sheet of the signed-in doctor's year,
// whose number the first line or referral stored takes.
class DenHelp final : public QDialog
{
    Q_OBJECT
public:
    // Shows the window, not modally, for the patient; `openMode` is "New" from a new patient
    // card and "Edit" from the name search. A window already open for the patient comes
    // forward; open for another, it asks first over unsaved typing and then loads this patient
    // (or, refused, stays as it is). Returns nullptr (after telling the user why) when no
    // window could be opened.
    static DenHelp *open(const QString &egn, const QString &name, const QString &openMode, QWidget *parent = nullptr);

    const QString &PatientEGN() const { return m_patientEgn; }
    const QString &PatientName() const { return m_patientName; }
    const QString &OpenMode() const { return m_openMode; }
    const QString &CurrentEGN() const { return m_currentEgn; }
    const QString &FirstName() const { return m_firstName; }
    // The number expected until the first line or referral takes it, then the number taken.
    const QString &SheetNumber() const { return m_sheet.number; }
    QString ScheduleLink() const;

signals:
    // Emitted as the window closes; from the name search ("Edit") the search closes with it.
    void closed(const QString &openMode);

public slots:
    // Escape: over typed rows it asks, and drops them only on ДА; it never stores and never
    // closes the window.
    void reject() override;

protected:
    // Asks over any unsaved typing (the grid, the referrals) and may refuse.
    void closeEvent(QCloseEvent *event) override;

private:
    explicit DenHelp(QWidget *parent);
    QWidget *buildPatientFrame();
    QWidget *buildServiceFrame();
    QWidget *buildButtons();
    bool load(const QString &egn, const QString &name, const QString &openMode);
    void bringForward();
    QString unsavedTyping() const;
    bool mayDropTyping();
    void showHeader();
    void showChart();
    void toothPointed(int field);
    void showMinutes(int minutes);
    void beginNewRow();
    void saveCurrentRow();
    bool unpaidLineConfirmed(const ServiceContext &context, const ServiceLine &line, int column);
    void editCurrentRow();
    void deleteCurrentRow();
    void currentRowChanged();
    void printMarkToggled(bool marked);
    void openSchedule();
    void openReferrals();
    void printSheet();
    void printTreatmentData();

    QString m_patientEgn;
    QString m_patientName;
    QString m_openMode;
    QString m_currentEgn;
    QString m_firstName;
    OpeningSheet m_sheet;

    ChartView *m_chart = nullptr;
    ServiceGridModel *m_model = nullptr;
    ServiceGridView *m_grid = nullptr;
    QCheckBox *m_check = nullptr;
    QLabel *m_minutes = nullptr;
    QLabel *m_patientRecord = nullptr;
    QLabel *m_serviceRecord = nullptr;
    QLabel *m_address = nullptr;
    QLabel *m_telephone = nullptr;
    QList<QLabel *> m_notes; // Label4 by index
    QPushButton *m_update = nullptr;
    QPushButton *m_delete = nullptr;
    QPushButton *m_close = nullptr;
    QPointer<PathWay> m_referrals;
};
