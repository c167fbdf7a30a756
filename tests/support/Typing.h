#pragma once

#include <QString>
#include <QTest>
#include <QWidget>

// Types a text into a widget key by key, Cyrillic included (QTest::keyClicks takes ASCII only).
inline void typeText(QWidget *widget, const QString &text)
{
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, QString(character), Qt::NoModifier);
}
