// Draws the pictures of the toolbar and the program's logo into src/shell/ui/icons/.
// Build and run by hand when a picture is to change:
//   g++ -std=c++20 -fPIC tools/make_icons.cpp -o /tmp/make_icons $(pkg-config --cflags --libs Qt6Gui)
//   QT_QPA_PLATFORM=offscreen /tmp/make_icons src/shell/ui/icons
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <cstdio>
#include <functional>

namespace {

constexpr int Size = 48;
const QColor Ink(0x25, 0x3a, 0x5e);
const QColor Paper(0xfb, 0xfb, 0xf6);
const QColor Teal(0x1f, 0x8a, 0x8a);
const QColor Green(0x2e, 0x9d, 0x4a);
const QColor Amber(0xe0, 0x9a, 0x1f);

QPen pen(const QColor &color, qreal width = 2.5)
{
    return QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

// A sheet of paper with a folded corner.
void sheet(QPainter &p, const QRectF &r)
{
    QPainterPath path;
    path.moveTo(r.left(), r.top());
    path.lineTo(r.right() - 10, r.top());
    path.lineTo(r.right(), r.top() + 10);
    path.lineTo(r.right(), r.bottom());
    path.lineTo(r.left(), r.bottom());
    path.closeSubpath();
    p.setPen(pen(Ink));
    p.setBrush(Paper);
    p.drawPath(path);
    p.drawLine(QPointF(r.right() - 10, r.top()), QPointF(r.right() - 10, r.top() + 10));
    p.drawLine(QPointF(r.right() - 10, r.top() + 10), QPointF(r.right(), r.top() + 10));
}

void textLines(QPainter &p, qreal left, qreal top, qreal width, int count)
{
    p.setPen(pen(QColor(0x9a, 0xa5, 0xb8), 2));
    for (int i = 0; i < count; ++i)
        p.drawLine(QPointF(left, top + i * 6), QPointF(left + width, top + i * 6));
}

QPainterPath toothPath(const QRectF &r)
{
    const qreal x = r.left(), y = r.top(), w = r.width(), h = r.height();
    QPainterPath path;
    path.moveTo(x + w * 0.5, y + h * 0.12);
    path.cubicTo(x + w * 0.3, y - h * 0.02, x - w * 0.02, y + h * 0.05, x + w * 0.03, y + h * 0.35);
    path.cubicTo(x + w * 0.06, y + h * 0.55, x + w * 0.18, y + h * 0.6, x + w * 0.2, y + h * 0.95);
    path.cubicTo(x + w * 0.22, y + h * 1.02, x + w * 0.34, y + h * 1.0, x + w * 0.36, y + h * 0.9);
    path.cubicTo(x + w * 0.4, y + h * 0.72, x + w * 0.44, y + h * 0.62, x + w * 0.5, y + h * 0.62);
    path.cubicTo(x + w * 0.56, y + h * 0.62, x + w * 0.6, y + h * 0.72, x + w * 0.64, y + h * 0.9);
    path.cubicTo(x + w * 0.66, y + h * 1.0, x + w * 0.78, y + h * 1.02, x + w * 0.8, y + h * 0.95);
    path.cubicTo(x + w * 0.82, y + h * 0.6, x + w * 0.94, y + h * 0.55, x + w * 0.97, y + h * 0.35);
    path.cubicTo(x + w * 1.02, y + h * 0.05, x + w * 0.7, y - h * 0.02, x + w * 0.5, y + h * 0.12);
    return path;
}

void tooth(QPainter &p, const QRectF &r, const QColor &outline)
{
    p.setPen(pen(outline, 2.5));
    p.setBrush(Qt::white);
    p.drawPath(toothPath(r));
}

void drawNew(QPainter &p)
{
    sheet(p, QRectF(8, 4, 28, 38));
    textLines(p, 13, 18, 16, 3);
    p.setPen(Qt::NoPen);
    p.setBrush(Green);
    p.drawEllipse(QPointF(35, 35), 10, 10);
    p.setPen(pen(Qt::white, 3.5));
    p.drawLine(QPointF(35, 29), QPointF(35, 41));
    p.drawLine(QPointF(29, 35), QPointF(41, 35));
}

void drawEdit(QPainter &p)
{
    sheet(p, QRectF(6, 4, 28, 38));
    textLines(p, 11, 16, 16, 4);
    p.save();
    p.translate(32, 28);
    p.rotate(45);
    p.setPen(pen(Ink, 2));
    p.setBrush(Amber);
    p.drawRect(QRectF(-4, -16, 8, 24));
    QPainterPath tip;
    tip.moveTo(-4, 8);
    tip.lineTo(4, 8);
    tip.lineTo(0, 15);
    tip.closeSubpath();
    p.setBrush(QColor(0xf3, 0xd9, 0xb1));
    p.drawPath(tip);
    p.restore();
}

void drawHelp(QPainter &p)
{
    tooth(p, QRectF(8, 6, 32, 36), Teal);
    p.setPen(pen(QColor(0xd6, 0x3b, 0x3b), 3.5));
    p.drawLine(QPointF(24, 15), QPointF(24, 29));
    p.drawLine(QPointF(17, 22), QPointF(31, 22));
}

void printer(QPainter &p)
{
    p.setPen(pen(Ink, 2));
    p.setBrush(Paper);
    p.drawRect(QRectF(14, 4, 20, 14));
    p.setBrush(QColor(0x8d, 0x99, 0xae));
    p.drawRoundedRect(QRectF(5, 17, 38, 18), 3, 3);
    p.setBrush(Paper);
    p.drawRect(QRectF(13, 28, 22, 16));
    p.setBrush(Green);
    p.setPen(Qt::NoPen);
    p.drawEllipse(QPointF(37, 22), 2, 2);
}

void drawZok(QPainter &p)
{
    printer(p);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(9);
    font.setBold(true);
    p.setFont(font);
    p.setPen(QColor(0x1f, 0x4e, 0x9c));
    p.drawText(QRectF(13, 29, 22, 14), Qt::AlignCenter, QStringLiteral("ЗОК"));
}

void calendar(QPainter &p, const QRectF &r)
{
    p.setPen(pen(Ink, 2));
    p.setBrush(Paper);
    p.drawRoundedRect(r, 3, 3);
    p.setBrush(QColor(0xd6, 0x3b, 0x3b));
    p.drawRect(QRectF(r.left(), r.top(), r.width(), 8));
    p.setPen(pen(QColor(0x9a, 0xa5, 0xb8), 1.5));
    for (int row = 1; row < 4; ++row)
        p.drawLine(QPointF(r.left() + 3, r.top() + 8 + row * (r.height() - 8) / 4),
                   QPointF(r.right() - 3, r.top() + 8 + row * (r.height() - 8) / 4));
    for (int column = 1; column < 4; ++column)
        p.drawLine(QPointF(r.left() + column * r.width() / 4, r.top() + 11),
                   QPointF(r.left() + column * r.width() / 4, r.bottom() - 3));
}

void drawGraf(QPainter &p)
{
    printer(p);
    p.setPen(pen(QColor(0xd6, 0x3b, 0x3b), 2));
    p.drawLine(QPointF(16, 33), QPointF(32, 33));
    p.setPen(pen(QColor(0x9a, 0xa5, 0xb8), 2));
    p.drawLine(QPointF(16, 38), QPointF(32, 38));
}

void drawPac(QPainter &p)
{
    printer(p);
    p.setPen(Qt::NoPen);
    p.setBrush(Teal);
    p.drawEllipse(QPointF(24, 33), 3, 3);
    p.drawPie(QRectF(18, 37, 12, 10), 0, 180 * 16);
}

void drawGrafic(QPainter &p)
{
    calendar(p, QRectF(5, 6, 38, 36));
    p.setPen(Qt::NoPen);
    p.setBrush(Teal);
    p.drawEllipse(QPointF(24 + 9.5 / 2, 30), 3.5, 3.5);
}

void drawLogo(QPainter &p)
{
    QRadialGradient glow(QPointF(20, 16), 30);
    glow.setColorAt(0, QColor(0x3f, 0xb6, 0xb0));
    glow.setColorAt(1, Teal.darker(130));
    p.setPen(Qt::NoPen);
    p.setBrush(glow);
    p.drawEllipse(QRectF(1, 1, 46, 46));
    tooth(p, QRectF(11, 9, 26, 30), Qt::white);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(255, 255, 255, 140));
    p.drawEllipse(QPointF(19, 17), 3, 2);
}

bool save(const QString &folder, const QString &name, const std::function<void(QPainter &)> &draw)
{
    QImage image(Size, Size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter);
    painter.end();
    return image.save(QDir(folder).filePath(name + QStringLiteral(".png")));
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_icons FOLDER\n");
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const std::pair<const char *, void (*)(QPainter &)> pictures[] = {
        {"New", drawNew},   {"Edit", drawEdit}, {"Help", drawHelp},     {"ZOK", drawZok},
        {"Graf", drawGraf}, {"Pac", drawPac},   {"Grafic", drawGrafic}, {"Velmorata", drawLogo},
    };
    for (const auto &[name, draw] : pictures)
        if (!save(folder, QString::fromLatin1(name), draw)) {
            std::fprintf(stderr, "could not write %s\n", name);
            return 1;
        }
    return 0;
}
