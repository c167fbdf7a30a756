#include "patients/ui/MouthView.h"

#include "base/ui/DrawingPainter.h"
#include "patients/ChartMarks.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <cmath>

namespace {

// Below this the tooth numbers cannot be read on a laptop's screen; above the most, the picture
// shows nothing more and its lines would cost more to draw than typing allows.
constexpr int LeastWidth = 420;
constexpr int MostWidth = 900;

QSize ofWidth(const QSizeF &size, int width)
{
    return {width, int(std::ceil(width * size.height() / size.width()))};
}

} // namespace

MouthView::MouthView(QWidget *parent)
    : QWidget(parent)
    , m_picture(mouth::drawMouth({}))
{
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setMaximumSize(ofWidth(m_picture.drawing.size, MostWidth));
}

void MouthView::setPicture(mouth::MouthPicture picture)
{
    m_picture = std::move(picture);
    update();
}

// It asks for no more than its least: the windows give it the room their other parts leave.
QSize MouthView::sizeHint() const
{
    return minimumSizeHint();
}

QSize MouthView::minimumSizeHint() const
{
    return ofWidth(m_picture.drawing.size, LeastWidth);
}

void MouthView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawing::paint(painter, m_picture.drawing, rect());
}

int MouthView::fieldAt(const QPoint &point) const
{
    const QTransform toWidget = drawing::fitting(m_picture.drawing, rect());
    return m_picture.fieldAt(toWidget.inverted().map(QPointF(point)));
}

QPoint MouthView::centreOf(int field) const
{
    const QTransform toWidget = drawing::fitting(m_picture.drawing, rect());
    return toWidget.map(m_picture.teeth.at(field - 1).box.center()).toPoint();
}

void MouthView::mousePressEvent(QMouseEvent *event)
{
    const int field = event->button() == Qt::LeftButton ? fieldAt(event->position().toPoint()) : 0;
    if (field > 0)
        emit toothClicked(field);
    else
        QWidget::mousePressEvent(event);
}

void MouthView::mouseMoveEvent(QMouseEvent *event)
{
    setCursor(fieldAt(event->position().toPoint()) > 0 ? Qt::PointingHandCursor : Qt::ArrowCursor);
    QWidget::mouseMoveEvent(event);
}

// The tooth under the pointer: its number and what its field holds, in the legend's words.
bool MouthView::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    auto *help = static_cast<QHelpEvent *>(event);
    const int field = fieldAt(help->pos());
    if (field == 0) {
        QToolTip::hideText();
        event->ignore();
        return true;
    }
    const mouth::Tooth &tooth = m_picture.teeth.at(field - 1);
    QStringList words;
    for (chartmarks::Mark mark : tooth.state.marks)
        words << chartmarks::wordOf(mark);
    if (!tooth.state.unread.isEmpty())
        words << tooth.state.unread;
    QToolTip::showText(help->globalPos(),
                       QStringLiteral("%1 %2").arg(tooth.tooth).arg(words.join(QStringLiteral(", "))), this);
    return true;
}
