#pragma once

#include "base/ui/OneWindow.h"

#include <QWidget>

class QComboBox;
class QLineEdit;
class QProgressBar;
class QPushButton;

// "Търсене на пациент": finds the signed-in doctor's patients by the first word of the name
// and hands the chosen one on through patientChosen, with the run-wide SeekPurpose: 1
// correction (the card), 2 treatment, 3 inquiry. The list is emptied by a choice.
class SeekName final : public QWidget, public OneWindow<SeekName>
{
    Q_OBJECT
    friend class OneWindow<SeekName>;

public:
    explicit SeekName(QWidget *parent = nullptr);

    // Sets SeekPurpose and shows the one search window (made on first use).
    static SeekName *openFor(int purpose, QWidget *parent = nullptr);
    // Closes the search window if one is open (the card and the treatment window do so on their way out).
    static void closeOpen();

    QString FoundName() const { return m_foundName; }
    QString FoundEGN() const { return m_foundEgn; }

public slots:
    void search();
    // A click on an entry of the list (the entry's text; empty when nothing is listed).
    void choose(const QString &entry);

signals:
    void patientChosen(int purpose, const QString &name, const QString &egn);

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void applyCaption();
    void whiten(QWidget *widget);

    QLineEdit *m_key;
    QPushButton *m_ok;
    QPushButton *m_cancel;
    QComboBox *m_list;
    QProgressBar *m_bar;
    QString m_foundName;
    QString m_foundEgn;
};
