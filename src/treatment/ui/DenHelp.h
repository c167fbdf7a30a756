#pragma once

#include <QDialog>
#include <QPointer>

class ChartView;
class QCheckBox;
class QLabel;
class QPushButton;
class ServiceGridModel;
class ServiceGridView;
class PathWay;

// The treatment window: one patient's data and chart, read-only, over the grid of every service
// recorded for the patient, where new services are typed by short code. Each opening takes the
// next ambulatory sheet number of the signed-in doctor's year.
class DenHelp final : public QDialog
{
    Q_OBJECT
public:
    // Opens the window, not modally, for the patient; `openMode` is "New" from a new patient
    // card and "Edit" from the name search. Returns nullptr (after telling the user why) when
    // the window cannot be opened.
    static DenHelp *open(const QString &egn, const QString &name, const QString &openMode, QWidget *parent = nullptr);

    const QString &PatientEGN() const { return m_patientEgn; }
    const QString &PatientName() const { return m_patientName; }
    const QString &OpenMode() const { return m_openMode; }
    const QString &CurrentEGN() const { return m_currentEgn; }
    const QString &FirstName() const { return m_firstName; }
    const QString &SheetNumber() const { return m_sheetNumber; }
    QString ScheduleLink() const;

signals:
    // Emitted as the window closes; from the name search ("Edit") the search closes with it.
    void closed(const QString &openMode);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    DenHelp(const QString &egn, const QString &name, const QString &openMode, QWidget *parent);
    QWidget *buildPatientFrame();
    QWidget *buildServiceFrame();
    QWidget *buildButtons();
    bool load();
    void showHeader();
    void showMinutes(int minutes);
    void beginNewRow();
    void saveCurrentRow();
    void editCurrentRow();
    void deleteCurrentRow();
    void currentRowChanged();
    void printMarkToggled(bool marked);
    void openSchedule();
    void openReferrals();

    QString m_patientEgn;
    QString m_patientName;
    QString m_openMode;
    QString m_currentEgn;
    QString m_firstName;
    QString m_sheetNumber;

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
