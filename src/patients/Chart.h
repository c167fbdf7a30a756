#pragma once

#include <QString>
#include <QStringList>

#include <array>

// The dental chart of the card as it stands on the screen: the 52 texts of the tooth inputs,
// which of the two inputs of each boxed place is shown, and the twenty boxes. The screen
// mirrors this state; every rule of entering and moving a finding lives here.
//
// Fields are numbered 1..52 (Z1..Z52), boxes 1..20 (Check1..Check20).
class Chart final
{
public:
    Chart();

    QString text(int field) const { return m_texts.at(field - 1); }
    void setText(int field, const QString &text) { m_texts[field - 1] = text; }
    const QStringList &texts() const { return m_texts; }
    void setTexts(const QStringList &texts);

    // Whether the input of the field is the visible, enabled one of its place.
    bool isShown(int field) const { return m_shown.at(field - 1); }
    bool boxOn(int box) const { return m_boxes.at(box - 1); }
    // The user switching a box; nothing moves until the box loses the focus.
    void setBoxOn(int box, bool on) { m_boxes[box - 1] = on; }

    void ShowToothField(int show, int hide);
    void MoveToothEntry(int target, int source);
    // Every box off and every permanent input shown, whatever the fields hold.
    void ResetChartBoxes();

    // The card coming to the front: a place whose milk field holds something shows the milk input.
    void comeToFront();
    void boxFocusIn(int box);
    void boxFocusOut(int box);
    // An input of the card was left: `field` is the chart field, or 0 for an input of the
    // personal data. Entry codes are translated over the whole chart.
    void inputLeft(int field);

private:
    QStringList m_texts;
    std::array<bool, 52> m_shown{};
    std::array<bool, 20> m_boxes{};
    int m_lastBoxState = 0; // the state of the box that last got the focus
};
