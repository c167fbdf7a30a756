#pragma once

#include "TestPractice.h"

#include <QTest>
#include <QWidget>

// Presses Escape on a window holding typing twice, answering НЕ and then ДА; true when the first
// kept the window, the second closed it, and each asked once.
inline bool escapeAsksBeforeClosing(QWidget &window, ScriptedDialogs &dialogs)
{
    const qsizetype asked = dialogs.questions.size();
    dialogs.answers = {false, true};
    QTest::keyClick(&window, Qt::Key_Escape);
    const bool kept = window.isVisible();
    QTest::keyClick(&window, Qt::Key_Escape);
    return kept && !window.isVisible() && dialogs.questions.size() == asked + 2;
}
