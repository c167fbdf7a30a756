#pragma once

#include <QObject>

#include <functional>

class QWidget;

// F1 in any window of the program opens that window's help page. The main window keeps its
// own F1 (the contents, or the page of the menu item under the pointer); every other window
// finds its page by its form's name, and a window of Qt's own (a file dialog, a question)
// takes the page of the window it belongs to, or else of the menu item whose work it serves.
class WindowHelp final : public QObject
{
    Q_OBJECT
public:
    WindowHelp(std::function<void(int)> showPage, QObject *parent);

    // The help context of the menu item whose work is in hand.
    void noteWork(int context) { m_workContext = context; }
    // The page of a window by its form's name, or of the nearest window it belongs to; 0 for none.
    static int contextOf(const QWidget *window);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    std::function<void(int)> m_showPage;
    int m_workContext = 0;
};
