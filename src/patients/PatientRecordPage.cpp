#include "patients/PatientRecordPage.h"

#include "patients/MouthPicture.h"

namespace patientrecord {
namespace {

constexpr double Left = 10.0;
constexpr double Right = 200.0;
constexpr double LineHeight = 5.0;
// The chart: sixteen cells across, the milk rows under the places of their permanent twins.
constexpr double CellWidth = 11.0;
constexpr double CellHeight = 7.0;
constexpr double ChartLeft = 17.0;
constexpr double NumberHeight = 4.0;
// The drawn mouth under the cells and their legend, centred on the page.
constexpr double MouthWidth = 120.0;

QRectF at(double x, double y, double width, double height = LineHeight) { return {x, y, width, height}; }

void addCaptions(print::PageDescription &form)
{
    struct Fixed
    {
        const char *name;
        const char16_t *text;
        QRectF rect;
    };
    const Fixed fixed[] = {
        {"Label18", u"Местоживеене:", at(Left, 25, 28)},      {"Label21", u"Телефони:", at(Left, 36, 28)},
        {"Label23", u"Месторабота:", at(Left, 42, 28)},       {"Label3", u"Пол", at(Left, 48, 10)},
        {"Label5", u"Кр.гр.", at(110, 48, 12)},               {"Label6", u"Ph", at(145, 48, 8)},
        {"Label8", u"Здр.кн.", at(Left, 54, 15)},             {"Label9", u"Рец.кн.", at(110, 54, 15)},
        {"Label4", u"Особености:", at(Left, 72, 25)},         {"Label50", u"Зъбен статус:", at(Left, 80, 40)},
    };
    for (const Fixed &item : fixed)
        form.items << print::caption(QString::fromLatin1(item.name), item.rect, QString::fromUtf16(item.text), 9.0);
    form.items << print::text(QStringLiteral("Label1"), at(Left, 8, Right - Left, 8),
                              QStringLiteral("Стоматологичен картон"), 14.0, Qt::AlignCenter);
    form.items.last().bold = true;
    form.items.last().ruling = true;
    form.items << print::caption(QStringLiteral("Label7"), at(Left, 60, 58), QStringLiteral("Внимание! Непоносимост към:"),
                                 9.0);
    form.items.last().bold = true;
}

// A cell of the chart with its code.
void addCell(print::PageDescription &form, const QString &name, int column, double y, const QString &code)
{
    const QRectF rect = at(ChartLeft + column * CellWidth, y, CellWidth, CellHeight);
    form.items << print::box(name + QStringLiteral("Box"), rect);
    form.items << print::text(name, rect, code, 9.0, Qt::AlignCenter);
}

void addNumber(print::PageDescription &form, int column, double y, int tooth)
{
    form.items << print::caption(QStringLiteral("Tooth%1").arg(tooth),
                                 at(ChartLeft + column * CellWidth, y, CellWidth, NumberHeight), QString::number(tooth));
    form.items.last().alignment = Qt::AlignCenter;
}

// One row of cells named Label<firstLabel>.., starting at screen column `firstColumn`, with the
// tooth numbers above or below it.
double addChartRow(print::PageDescription &form, const QList<ChartCell> &cells, int firstLabel, int firstColumn,
                   double y, bool numbersAbove)
{
    const double cellsTop = numbersAbove ? y + NumberHeight : y;
    const double numbersTop = numbersAbove ? y : y + CellHeight;
    for (int i = 0; i < cells.size(); ++i) {
        addNumber(form, firstColumn + i, numbersTop, cells.at(i).tooth);
        addCell(form, QStringLiteral("Label%1").arg(firstLabel + i), firstColumn + i, cellsTop, cells.at(i).code);
    }
    return y + NumberHeight + CellHeight + 1.0;
}

// The drawn mouth of the 52 fields from `top`; returns where it ends.
double addMouth(print::PageDescription &form, const QStringList &fields, double top)
{
    mouth::MouthPicture drawn = mouth::drawMouth(fields);
    const QSizeF size = drawn.drawing.size;
    const double height = MouthWidth * size.height() / size.width();
    const QRectF rect((form.size.width() - MouthWidth) / 2.0, top, MouthWidth, height);
    form.items << print::picture(QStringLiteral("Mouth"), rect, std::move(drawn.drawing));
    return top + height;
}

QList<ServiceColumn> recordColumns()
{
    return {
        {QStringLiteral("Label12"), QStringLiteral("Дата"), QStringLiteral("Text1"), 10, 20,
         [](const ServiceLine &line) { return line.Data; }},
        {QStringLiteral("Label13"), QStringLiteral("Диагноза"), QStringLiteral("Text2"), 30, 55,
         [](const ServiceLine &line) { return line.Help; }},
        {QStringLiteral("Label14"), QStringLiteral("Дейност"), QStringLiteral("Text3"), 85, 70,
         [](const ServiceLine &line) { return line.TextHelp; }},
        {QStringLiteral("Label10"), QStringLiteral("код дейност"), QStringLiteral("Text5"), 155, 25,
         [](const ServiceLine &line) { return line.KodHelp; }},
        {QStringLiteral("Label11"), QStringLiteral("код зъб"), QStringLiteral("Text4"), 180, 20,
         [](const ServiceLine &line) { return line.KodZab; }},
    };
}

} // namespace

void addPersonalHead(print::PageDescription &form, const PersonalTexts &personal, const PersonalItemNames &names)
{
    addCaptions(form);
    form.items << print::text(names.names, at(Left, 16, Right - Left, 6), personal.names, 10.0, Qt::AlignCenter);
    form.items << print::wrapped(names.address, at(40, 25, Right - 40, 10), personal.address);
    form.items << print::text(names.telephones, at(40, 36, Right - 40), personal.telephones);
    form.items << print::text(names.work, at(40, 42, Right - 40), personal.work);
    form.items << print::text(names.pol, at(20, 48, 20), personal.Pol);
    form.items << print::text(names.registered, at(45, 48, 32), personal.registeredCaption);
    form.items << print::text(names.dataR, at(77, 48, 25), personal.DataR);
    form.items << print::text(names.krGr, at(122, 48, 20), personal.KrGr);
    form.items << print::text(names.ph, at(153, 48, 47), personal.Ph);
    form.items << print::text(names.zBook, at(25, 54, 80), personal.ZBook);
    form.items << print::text(names.rBook, at(125, 54, 75), personal.RBook);
    form.items << print::wrapped(names.nep, at(70, 60, Right - 70, 11), personal.Nep);
    form.items << print::wrapped(names.osob, at(35, 72, Right - 35, 8), personal.Osob);
}

void setServiceBand(print::PageDescription &form, double top, const QList<ServiceColumn> &columns,
                    const QList<ServiceLine> &services)
{
    form.band.top = top;
    form.band.bottom = form.size.height() - 14.0;
    form.band.headerHeight = 7.0;
    form.band.rowHeight = LineHeight;
    for (const ServiceColumn &column : columns) {
        form.band.header << print::caption(column.headingName, at(column.x, 0, column.width), column.heading, 9.0);
        form.band.header.last().bold = true;
    }
    form.band.header << print::line(QStringLiteral("HeadLine"), {Left, 6}, {Right, 6});
    for (const ServiceLine &service : services) {
        QList<print::PageItem> row;
        for (const ServiceColumn &column : columns)
            row << print::text(column.itemName, at(column.x, 0, column.width - 1), column.value(service));
        form.band.rows << row;
    }
    form.headOnFirstPageOnly = true;
}

print::PageDescription RecordPage(const PatientRecord &record)
{
    print::PageDescription form(QStringLiteral("rprPacient"), print::A4);
    form.title = QStringLiteral("Стоматологичен картон");
    form.whose = record.personal.patientNames;
    addPersonalHead(form, record.personal,
                    {QStringLiteral("Label2"), QStringLiteral("Label19"), QStringLiteral("Label22"),
                     QStringLiteral("Label24"), QStringLiteral("Label25"), QStringLiteral("Label33"),
                     QStringLiteral("Label32"), QStringLiteral("Label26"), QStringLiteral("Label27"),
                     QStringLiteral("Label28"), QStringLiteral("Label29"), QStringLiteral("Label31"),
                     QStringLiteral("Label30")});
    double y = ChartTop;
    y = addChartRow(form, record.chart.permanentUpper, 68, 0, y, true);
    y = addChartRow(form, record.chart.milkUpper, 52, 3, y, false);
    y = addChartRow(form, record.chart.milkLower, 37, 3, y + 2.0, true);
    y = addChartRow(form, record.chart.permanentLower, 84, 0, y, false);
    form.items << print::caption(QStringLiteral("Label34"), at(Left, y + 1, 20), QStringLiteral("Легенда"), 8.0);
    form.items << print::caption(QStringLiteral("Label35"), at(30, y + 1, Right - 30), RecordLegend(), 7.0);
    y = addMouth(form, record.chart.fields, y + 8.0);
    setServiceBand(form, y + 3.0, recordColumns(), record.services);
    return form;
}

} // namespace patientrecord
