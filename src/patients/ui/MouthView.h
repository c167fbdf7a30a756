#pragma once

#include "patients/MouthPicture.h"

#include <QWidget>

// The drawn chart on a screen, scaled to the widget with its proportions kept and centred in it. A click on a
// tooth is reported with the tooth's field; what a click does is the window's business.
class MouthView final : public QWidget
{
    Q_OBJECT
public:
    explicit MouthView(QWidget *parent = nullptr);

    void setPicture(mouth::MouthPicture picture);
    const mouth::MouthPicture &picture() const { return m_picture; }
    // Where the tooth of `field` stands on the widget, for a test's click.
    QPoint centreOf(int field) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void toothClicked(int field);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    bool event(QEvent *event) override;

private:
    int fieldAt(const QPoint &point) const;

    mouth::MouthPicture m_picture;
};
