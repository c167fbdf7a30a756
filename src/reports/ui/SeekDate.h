#pragma once

#include "base/ui/OneWindow.h"
#include "reports/forms/PrintedReports.h"

#include <QDialog>

class QLineEdit;
class QPushButton;

// "Период...": the period of a report to the fund. Not modal, so the main window stays usable;
// it stays open behind a printed report and closes when the report does.
class SeekDate final : public QDialog, public OneWindow<SeekDate>
{
    Q_OBJECT
    friend class OneWindow<SeekDate>;

public:
    // What the dialog's "Търси" leads to: a report, the accounting form (which the menu's
    // "Осчетоводяване" does not reach, as that entry leads to the XML report), or the check of
    // the period's claims before the report.
    enum class Purpose { Report, Accounting, ClaimsCheck };

    // Opens the one period dialog for `kind` (or brings it forward, now serving `kind`).
    static SeekDate *open(QWidget *parent, reports::ReportKind kind);
    static SeekDate *openForAccounting(QWidget *parent);
    static SeekDate *openForClaimsCheck(QWidget *parent);
    static SeekDate *current() { return openWindow(); }

    explicit SeekDate(QWidget *parent = nullptr);

    reports::ReportKind kind() const { return m_kind; }
    Purpose purpose() const { return m_purpose; }
    // The period of the last accepted "Търси".
    const reports::Period &period() const { return m_period; }

    void reject() override; // Escape is "Отказ"

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    static SeekDate *show(QWidget *parent, Purpose purpose);
    bool eventFilter(QObject *watched, QEvent *event) override;
    void search();
    void cancel();

    reports::ReportKind m_kind = reports::ReportKind::Activity;
    Purpose m_purpose = Purpose::Report;
    reports::Period m_period;
    QLineEdit *m_from = nullptr;
    QLineEdit *m_to = nullptr;
    QPushButton *m_ok = nullptr;
};
