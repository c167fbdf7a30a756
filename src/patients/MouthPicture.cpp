#include "patients/MouthPicture.h"

#include "patients/Chart.h"
#include "patients/ToothOutlines.h"

#include <algorithm>

namespace mouth {
namespace {

using chartmarks::Mark;
using drawing::Shape;
using drawing::ShapeKind;
using Points = QList<QPointF>;

// The picture in millimetres as it stands on the record print.
constexpr double Margin = 2.0;
constexpr double ColumnWidth = 10.0;
constexpr double Midline = 3.0; // between the right and the left half of the mouth
constexpr double NumberHeight = 4.5;
constexpr double Width = 2 * Margin + 16 * ColumnWidth + Midline;
constexpr double LegendTop = 98.5;
constexpr double LegendRow = 6.0;
constexpr int LegendColumns = 4;

constexpr drawing::Rgb Outline = 0x303030;
constexpr drawing::Rgb Faded = 0xA8A8A8;
constexpr drawing::Rgb Guide = 0xC8C8C8;
constexpr drawing::Rgb MilkNumber = 0xB00000;

// A row of teeth: where its teeth and its numbers stand.
struct Row final
{
    double teethTop;
    double teethHeight;
    double numbersTop;
    double inset; // on each side of a tooth within its column
};
constexpr Row UpperPermanent{4.5, 22.0, 0.0, 0.6};
constexpr Row UpperMilk{28.5, 14.0, 42.5, 1.4};
constexpr Row LowerMilk{53.5, 14.0, 49.0, 1.4};
constexpr Row LowerPermanent{69.5, 22.0, 91.5, 0.6};
constexpr double BiteLine = 48.0;

const Row &rowOf(const toothmap::Position &place)
{
    if (place.milk)
        return place.upper ? UpperMilk : LowerMilk;
    return place.upper ? UpperPermanent : LowerPermanent;
}

double columnLeft(int column)
{
    return Margin + column * ColumnWidth + (column >= 8 ? Midline : 0.0);
}

bool has(const chartmarks::ToothState &state, Mark mark)
{
    return state.marks.contains(mark);
}

QRectF boundsOf(const Points &points)
{
    QPointF least = points.first();
    QPointF most = points.first();
    for (const QPointF &point : points) {
        least = {std::min(least.x(), point.x()), std::min(least.y(), point.y())};
        most = {std::max(most.x(), point.x()), std::max(most.y(), point.y())};
    }
    return {least, most};
}

// One tooth (or a legend's sample of one) being drawn: its box, which way up, and its tags.
class ToothPainter final
{
public:
    ToothPainter(drawing::Drawing &target, const QRectF &box, bool flipped, QString tag)
        : m_target(target)
        , m_box(box)
        , m_flipped(flipped)
        , m_tag(std::move(tag))
    {
    }

    void draw(toothoutlines::Kind kind, const chartmarks::ToothState &state, bool present)
    {
        const toothoutlines::Outline &outline = toothoutlines::outlineOf(kind);
        drawRoots(outline, state, present);
        drawCrown(outline, state, present);
        for (Mark mark : state.marks)
            drawMark(mark, outline);
        if (!state.unread.isEmpty())
            drawUnread(state.unread);
    }

private:
    Points at(const Points &local) const { return drawing::placed(local, m_box, m_flipped); }

    Shape &add(ShapeKind kind, const Points &local, const QString &what)
    {
        Shape shape;
        shape.kind = kind;
        shape.points = at(local);
        shape.tag = m_tag + what;
        m_target.shapes << shape;
        return m_target.shapes.last();
    }

    static void outlined(Shape &shape, bool present)
    {
        shape.pen = present ? Outline : Faded;
        shape.penWidth = present ? 0.25 : 0.2;
        shape.dashed = !present;
    }

    void drawRoots(const toothoutlines::Outline &outline, const chartmarks::ToothState &state, bool present)
    {
        const bool inMouth = present && !has(state, Mark::Missing) && !has(state, Mark::Artificial);
        for (const Points &root : outline.roots) {
            Shape &shape = add(ShapeKind::Polygon, root, QStringLiteral(".roots"));
            outlined(shape, inMouth);
            for (Mark filled : {Mark::Gangrene, Mark::Pulpitis, Mark::Root})
                if (has(state, filled)) {
                    shape.fill = colourOf(filled);
                    shape.fillStyle = drawing::FillStyle::Solid;
                    shape.tag = m_tag + QLatin1Char(':') + chartmarks::nameOf(filled);
                    break;
                }
        }
    }

    void drawCrown(const toothoutlines::Outline &outline, const chartmarks::ToothState &state, bool present)
    {
        // A root remnant has no crown left, an artificial tooth's is hatched, a crowned tooth's is ringed.
        const bool inMouth = present && !has(state, Mark::Missing) && !has(state, Mark::Root);
        Shape &crown = add(ShapeKind::Polygon, outline.crown, QStringLiteral(".outline"));
        outlined(crown, inMouth);
        if (inMouth) {
            crown.fill = 0xFFFFFF;
            crown.fillStyle = drawing::FillStyle::Solid;
        }
        m_crown = outline.crown;
    }

    void drawMark(Mark mark, const toothoutlines::Outline &outline)
    {
        const QString what = QLatin1Char(':') + chartmarks::nameOf(mark);
        switch (mark) {
        case Mark::Caries: {
            Shape &spot = add(ShapeKind::Ellipse, {}, what);
            spot.rect = boundsOf(at({{0.46, 0.64}, {0.78, 0.87}}));
            filled(spot, mark);
            break;
        }
        case Mark::Filling:
            filled(add(ShapeKind::Polygon, {{0.24, 0.6}, {0.56, 0.6}, {0.56, 0.9}, {0.24, 0.9}}, what), mark);
            break;
        case Mark::Crown: {
            Shape &ring = add(ShapeKind::Polygon, outline.crown, what);
            ring.pen = colourOf(mark);
            ring.penWidth = 0.8;
            break;
        }
        case Mark::Artificial: {
            Shape &hatched = add(ShapeKind::Polygon, outline.crown, what);
            hatched.pen = colourOf(mark);
            hatched.fill = colourOf(mark);
            hatched.fillStyle = drawing::FillStyle::Hatched;
            break;
        }
        case Mark::Missing:
            stroked(add(ShapeKind::Polyline, {{0.08, 0.06}, {0.92, 0.97}}, what), mark, 0.45);
            stroked(add(ShapeKind::Polyline, {{0.92, 0.06}, {0.08, 0.97}}, what), mark, 0.45);
            break;
        case Mark::Periodontosis:
            stroked(add(ShapeKind::Polyline, zigzag(toothoutlines::Neck - 0.04, 0.08), what), mark, 0.45);
            break;
        case Mark::Fracture:
            stroked(add(ShapeKind::Polyline, {{0.56, 0.5}, {0.42, 0.64}, {0.6, 0.78}, {0.44, 0.97}}, what), mark, 0.4);
            break;
        case Mark::Mobility1:
        case Mark::Mobility2:
        case Mark::Mobility3:
            for (int line = 0; line <= int(mark) - int(Mark::Mobility1); ++line) {
                const double y = 0.14 + 0.1 * line;
                stroked(add(ShapeKind::Polyline, {{0.06, y}, {0.94, y}}, what), mark, 0.45);
            }
            break;
        case Mark::Pulpitis:
        case Mark::Gangrene:
        case Mark::Root:
            break; // drawn as the root's own colour
        }
    }

    static Points zigzag(double y, double height)
    {
        Points points;
        for (int step = 0; step <= 8; ++step)
            points << QPointF(-0.02 + step * 1.04 / 8, y + (step % 2 ? height / 2 : -height / 2));
        return points;
    }

    static void filled(Shape &shape, Mark mark)
    {
        shape.fill = colourOf(mark);
        shape.fillStyle = drawing::FillStyle::Solid;
        shape.pen = colourOf(mark);
        shape.penWidth = 0.15;
    }

    static void stroked(Shape &shape, Mark mark, double width)
    {
        shape.pen = colourOf(mark);
        shape.penWidth = width;
    }

    void drawUnread(const QString &text)
    {
        Shape &shape = add(ShapeKind::Text, {}, QStringLiteral(":text"));
        const QRectF crown = boundsOf(at(m_crown));
        shape.rect = crown.adjusted(-crown.width() * 0.4, 0, crown.width() * 0.4, 0);
        shape.text = text;
        shape.textHeight = std::min(2.6, crown.height() * 0.7);
        shape.bold = true;
    }

    drawing::Drawing &m_target;
    QRectF m_box;
    bool m_flipped;
    QString m_tag;
    Points m_crown;
};

Tooth placeTooth(const toothmap::Position &place, const QString &text, bool present)
{
    const Row &row = rowOf(place);
    const double left = columnLeft(toothmap::columnOf(place.field));
    Tooth tooth;
    tooth.field = place.field;
    tooth.tooth = place.tooth;
    tooth.present = present;
    tooth.box = QRectF(left + row.inset, row.teethTop, ColumnWidth - 2 * row.inset, row.teethHeight);
    tooth.area = QRectF(left, row.teethTop, ColumnWidth, row.teethHeight)
                     .united(QRectF(left, row.numbersTop, ColumnWidth, NumberHeight));
    tooth.state = chartmarks::stateOf(text);
    return tooth;
}

void addNumber(drawing::Drawing &picture, const Tooth &tooth, const toothmap::Position &place)
{
    Shape number;
    number.kind = ShapeKind::Text;
    number.rect = QRectF(tooth.area.left(), rowOf(place).numbersTop, ColumnWidth, NumberHeight);
    number.text = QString::number(tooth.tooth);
    number.textHeight = place.milk ? 3.3 : 4.0;
    number.pen = place.milk ? MilkNumber : 0x000000;
    number.tag = toothmap::fieldName(tooth.field) + QStringLiteral(".number");
    picture.shapes << number;
}

void addGuides(drawing::Drawing &picture)
{
    Shape bite;
    bite.kind = ShapeKind::Polyline;
    bite.points = {{Margin, BiteLine}, {Width - Margin, BiteLine}};
    bite.pen = Guide;
    bite.tag = QStringLiteral("guides");
    Shape middle = bite;
    const double x = columnLeft(8) - Midline / 2.0;
    middle.points = {{x, 0.0}, {x, LowerPermanent.numbersTop + NumberHeight}};
    picture.shapes << bite << middle;
}

void addLegend(drawing::Drawing &picture)
{
    const double columnWidth = (Width - 2 * Margin) / LegendColumns;
    const QList<chartmarks::LegendEntry> &entries = chartmarks::legend();
    for (int i = 0; i < entries.size(); ++i) {
        const QString tag = QStringLiteral("legend:") + chartmarks::nameOf(entries.at(i).mark);
        const double left = Margin + (i % LegendColumns) * columnWidth;
        const double top = LegendTop + (i / LegendColumns) * LegendRow;
        // A molar shows every mark large enough to see beside its word.
        ToothPainter(picture, QRectF(left, top, 5.6, 5.8), false, tag)
            .draw(toothoutlines::Kind::Molar, {{entries.at(i).mark}, {}}, true);
        Shape word;
        word.kind = ShapeKind::Text;
        word.rect = QRectF(left + 6.6, top, columnWidth - 7.0, 5.8);
        word.text = entries.at(i).word;
        word.textHeight = 3.4;
        word.alignment = Qt::AlignLeft | Qt::AlignVCenter;
        word.tag = tag + QStringLiteral(".word");
        picture.shapes << word;
    }
}

} // namespace

MilkPlaces milkPlacesOf(const QStringList &texts)
{
    Chart chart;
    chart.setTexts(texts);
    chart.comeToFront();
    MilkPlaces places{};
    for (int box = 1; box <= toothmap::BoxCount; ++box)
        places[box - 1] = chart.boxOn(box);
    return places;
}

int MouthPicture::fieldAt(const QPointF &point) const
{
    for (const Tooth &tooth : teeth)
        if (tooth.area.contains(point))
            return tooth.field;
    return 0;
}

MouthPicture drawMouth(const QStringList &texts, const MilkPlaces &milkPlaces)
{
    MouthPicture mouth;
    const int legendRows = int((chartmarks::legend().size() + LegendColumns - 1) / LegendColumns);
    mouth.drawing.size = QSizeF(Width, LegendTop + legendRows * LegendRow);
    mouth.drawing.shapes.reserve(420);
    addGuides(mouth.drawing);
    for (const toothmap::Position &place : toothmap::positions()) {
        const bool milkIn = place.box > 0 && milkPlaces[place.box - 1];
        const bool present = place.box == 0 || milkIn == place.milk;
        const Tooth tooth = placeTooth(place, texts.value(place.field - 1), present);
        ToothPainter(mouth.drawing, tooth.box, !place.upper, toothmap::fieldName(place.field))
            .draw(toothoutlines::kindOf(place.tooth), tooth.state, present);
        addNumber(mouth.drawing, tooth, place);
        mouth.teeth << tooth;
    }
    addLegend(mouth.drawing);
    return mouth;
}

drawing::Rgb colourOf(Mark mark)
{
    switch (mark) {
    case Mark::Caries:
        return 0xD00000;
    case Mark::Filling:
        return 0x5AAAF5;
    case Mark::Pulpitis:
        return 0xFF9A2E;
    case Mark::Gangrene:
        return 0x4A2270;
    case Mark::Root:
        return 0x8B5A2B;
    case Mark::Missing:
        return 0x303030;
    case Mark::Crown:
        return 0xC89B00;
    case Mark::Artificial:
        return 0x2E8B57;
    case Mark::Periodontosis:
        return 0x9B59B6;
    case Mark::Fracture:
        return 0x000000;
    case Mark::Mobility1:
    case Mark::Mobility2:
    case Mark::Mobility3:
        return 0x008B8B;
    }
    return 0x000000;
}

} // namespace mouth
