#include "treatment/SheetPrintPage.h"

#include "patients/ToothMap.h"
#include "store/Dates.h"

using namespace print;

namespace {

const QString FormName = QStringLiteral("rprKarton");
constexpr double Left = 15.0;
constexpr double Width = 180.0;
constexpr double ChartTop = 150.0;
constexpr double ToothWidth = Width / 16.0;

// A box of the form with its caption above it and the data cell inside.
void captioned(PageDescription &form, const QString &label, const QString &title, const QRectF &rect,
               const QHash<QString, QString> &cells)
{
    form.items << caption(label + QStringLiteral("Caption"), QRectF(rect.left(), rect.top() - 4.0, rect.width(), 4.0), title);
    form.items << box(label + QStringLiteral("Box"), rect);
    form.items << text(label, rect.adjusted(1.0, 0.5, -1.0, -0.5), cells.value(label));
}

void digits(PageDescription &form, const QString &label, const QString &title, const QRectF &rect, int gap, int count,
            const QHash<QString, QString> &cells)
{
    form.items << caption(label + QStringLiteral("Caption"), QRectF(rect.left(), rect.top() - 4.0, rect.width() + 20.0, 4.0),
                          title);
    form.items << digitBoxes(label, rect, cells.value(label), gap, count);
}

void addTitle(PageDescription &form, const QHash<QString, QString> &cells)
{
    digits(form, QStringLiteral("Label2"), QStringLiteral("РЗОК №"), {Left, 14, 10, 6}, 1, 2, cells);
    digits(form, QStringLiteral("Label3"), QStringLiteral("Здр. район"), {Left + 25, 14, 10, 6}, 1, 2, cells);
    digits(form, QStringLiteral("Label6"), QStringLiteral("Рег. № на практиката"), {Left + 120, 14, 60, 6}, 1, 10, cells);
    PageItem title = caption(QStringLiteral("Title"), {Left, 24, Width, 8}, QStringLiteral("АМБУЛАТОРЕН ЛИСТ"), 14);
    title.bold = true;
    title.alignment = Qt::AlignCenter;
    form.items << title;
    digits(form, QStringLiteral("Label1"), QStringLiteral("ЕГН на пациента"), {Left, 40, 60, 6}, 1, 10, cells);
}

void addPatient(PageDescription &form, const QHash<QString, QString> &cells)
{
    captioned(form, QStringLiteral("Label4"), QStringLiteral("Име, презиме, фамилия"), {Left, 54, Width, 7}, cells);
    captioned(form, QStringLiteral("Label50"), QStringLiteral("Населено място"), {Left, 67, 60, 7}, cells);
    captioned(form, QStringLiteral("Label13"), QStringLiteral("ж.к."), {Left + 62, 67, 50, 7}, cells);
    captioned(form, QStringLiteral("Label5"), QStringLiteral("ул."), {Left + 114, 67, 66, 7}, cells);
    captioned(form, QStringLiteral("Label14"), QStringLiteral("бл."), {Left, 80, 20, 7}, cells);
    captioned(form, QStringLiteral("Label15"), QStringLiteral("вх."), {Left + 22, 80, 20, 7}, cells);
    captioned(form, QStringLiteral("Label16"), QStringLiteral("ет."), {Left + 44, 80, 20, 7}, cells);
    captioned(form, QStringLiteral("Label17"), QStringLiteral("ап."), {Left + 66, 80, 20, 7}, cells);
    digits(form, QStringLiteral("Label9"), QStringLiteral("Здравноосигурителна книжка №"), {Left + 120, 80, 60, 6}, 1, 10, cells);
    form.items << caption(QStringLiteral("BirthCaption"), {Left, 89, 80, 4}, QStringLiteral("Дата на раждане (ден, месец, година)"));
    form.items << digitBoxes(QStringLiteral("Label52"), {Left, 93, 12, 6}, cells.value(QStringLiteral("Label52")), 2, 2);
    form.items << digitBoxes(QStringLiteral("Label51"), {Left + 14, 93, 12, 6}, cells.value(QStringLiteral("Label51")), 2, 2);
    form.items << digitBoxes(QStringLiteral("Label53"), {Left + 28, 93, 12, 6}, cells.value(QStringLiteral("Label53")), 2, 2);
    form.items << digitBoxes(QStringLiteral("Label54"), {Left + 40, 93, 12, 6}, cells.value(QStringLiteral("Label54")), 2, 2);
    captioned(form, QStringLiteral("Label10"), QStringLiteral("Непоносимост / алергии"), {Left, 106, Width, 7}, cells);
    captioned(form, QStringLiteral("Label11"), QStringLiteral("Минали заболявания"), {Left, 118, 88, 7}, cells);
    captioned(form, QStringLiteral("Label12"), QStringLiteral("Настоящи заболявания"), {Left + 92, 118, 88, 7}, cells);
    captioned(form, QStringLiteral("Label8"), QStringLiteral("Лекар по дентална медицина"), {Left, 131, 110, 7}, cells);
    digits(form, QStringLiteral("Label7"), QStringLiteral("ЕГН на лекаря"), {Left + 120, 132, 60, 6}, 1, 10, cells);
}

// One jaw: the tooth numbers on the outer side, the 16 cells, the milk frames where they show.
void addJaw(PageDescription &form, const QList<int> &row, double top, bool numbersAbove, const QList<ChartCell> &cells)
{
    for (int n = 0; n < row.size(); ++n) {
        const int field = row.at(n);
        const QRectF cell(Left + n * ToothWidth, top, ToothWidth, 8.0);
        const QRectF number = cell.translated(0, numbersAbove ? -4.5 : 8.5).adjusted(0, 0, 0, -3.5);
        form.items << caption(QStringLiteral("Tooth%1").arg(field), number, QString::number(toothmap::toothOf(field)), 6.5);
        form.items.last().alignment = Qt::AlignCenter;
        form.items << box(chartCellName(field) + QStringLiteral("Box"), cell);
        const ChartCell &value = cells.at(field - 21);
        form.items << text(chartCellName(field), cell.adjusted(1.2, 1.2, -1.2, -1.2), value.text, 8.0, Qt::AlignCenter);
        if (value.milkFrame) {
            form.items << frame(QStringLiteral("Shape%1").arg(value.milkField), cell.adjusted(0.6, 0.6, -0.6, -0.6));
            form.items << frame(QStringLiteral("Shape%1").arg(100 + value.milkField), cell.adjusted(1.1, 1.1, -1.1, -1.1), 0.3);
        }
    }
}

void addChart(PageDescription &form, const SheetData &sheet)
{
    form.items << caption(QStringLiteral("ChartCaption"), {Left, ChartTop - 9, Width, 4}, QStringLiteral("Зъбен статус"));
    static const QStringList noChart(toothmap::FieldCount, QString());
    const QList<ChartCell> cells = SheetChartCells(sheet.dental.value_or(noChart));
    addJaw(form, toothmap::upperRow(), ChartTop, true, cells);
    addJaw(form, toothmap::lowerRow(), ChartTop + 8.0, false, cells);
}

struct Column final
{
    const char *name;
    const char *title;
    double left;
    double width;
    int cells; // digit boxes, or 0 for a text
};

const Column columns[] = {
    {"Text1", "Дата", 0, 22, 0},       {"Text2", "Диагноза", 22, 58, 0}, {"Text3", "МКБ", 80, 25, 5},
    {"Text4", "Код", 105, 15, 3},      {"Text5", "Дейност", 120, 60, 0},
};

QList<PageItem> detailRow(const SheetLine &line)
{
    const QString values[] = {dates::isoToTyped(line.Data), line.Help, line.KodZab, line.KodHelp, line.TextHelp};
    QList<PageItem> row;
    for (int n = 0; n < 5; ++n) {
        const Column &column = columns[n];
        const QRectF cell(Left + column.left, 0, column.width, 7);
        const QString name = QString::fromLatin1(column.name);
        row << box(name + QStringLiteral("Box"), cell);
        if (column.cells)
            row << digitBoxes(name, cell.adjusted(1, 1, -1, -1), values[n], 2, column.cells);
        else
            row << text(name, cell.adjusted(1, 0, -1, 0), values[n], 8.0);
    }
    return row;
}

void addServices(PageDescription &form, const QList<SheetLine> &lines)
{
    form.band.top = 180;
    form.band.bottom = 284;
    form.band.headerHeight = 6;
    form.band.rowHeight = 7;
    for (const Column &column : columns) {
        PageItem head = caption(QStringLiteral("Head") + QString::fromLatin1(column.name),
                                {Left + column.left, 0, column.width, 6}, QString::fromUtf8(column.title), 7.5);
        head.alignment = Qt::AlignCenter;
        form.band.header << box(head.name + QStringLiteral("Box"), head.rect) << head;
    }
    for (const SheetLine &line : lines)
        form.band.rows << detailRow(line);
}

} // namespace

PageDescription KartonPage(const SheetData &sheet)
{
    PageDescription form(FormName, A4);
    form.title = QStringLiteral("Амбулаторен лист");
    form.whose = sheet.patient.value(QStringLiteral("Names")).toString();
    const QHash<QString, QString> cells = SheetHeaderCells(sheet);
    addTitle(form, cells);
    addPatient(form, cells);
    addChart(form, sheet);
    addServices(form, sheet.lines);
    return form;
}
