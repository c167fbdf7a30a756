#pragma once

#include "base/ui/OneWindow.h"
#include "diary/Diary.h"

#include <QDialog>

class QLabel;
class QLineEdit;

// The signed-in doctor's diary, one page per day, leafed through in date order. Opened from
// the treatment window a click on a slot books that window's patient.
class Grafic final : public QDialog, public OneWindow<Grafic>
{
    Q_OBJECT
    friend class OneWindow<Grafic>;

public:
    // Shows the diary modally and returns when it is closed; while it is open a second call
    // only brings it forward.
    static void open(QWidget *parent = nullptr);

    explicit Grafic(QWidget *parent = nullptr);

    void reject() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *buildSlots();
    QWidget *buildNavigator();
    QWidget *buildButtons();
    void reload(int position);
    void showPage();
    void showWeekday();
    DiaryPage pageOnScreen() const;
    bool pageChanged() const;
    bool typedWithoutPage() const;
    void closeStoring();
    bool commitChanges();
    void moveTo(int position);
    void addPage();
    void savePage();
    void deletePage();
    void book(int slot);

    QList<DiaryPage> m_pages;
    int m_position = -1;
    QList<QLineEdit *> m_slots; // Text1 by index
    QLineEdit *m_date = nullptr;
    QLabel *m_weekday = nullptr;
};
