#include "reports/forms/ClaimFormPage.h"

#include <QHash>

using namespace print;

namespace reports {
namespace {

const QString FormName = QStringLiteral("rptSpec");
constexpr double Left = 12.0;
constexpr double Width = 186.0;
constexpr double Right = Left + Width;

// The columns of the table, left edge and width in mm.
struct Column final
{
    double left;
    double width;
};
constexpr Column CodeColumn{Left, 16};
constexpr Column ActivityColumn{Left + 16, 94};
constexpr Column PriceColumn{Left + 110, 26};
constexpr Column CountColumn{Left + 136, 20};
constexpr Column SumColumn{Left + 156, 30};

// Lays the form out from top to bottom; fixed texts and ruling get names of their own so that
// every item on the page can be found.
class SpecificationSheet final
{
public:
    explicit SpecificationSheet(const QList<SpecificationCell> &cells)
        : m_form(FormName, A4)
    {
        for (const SpecificationCell &cell : cells)
            m_cells.insert(cell.name, cell.text);
    }

    PageDescription build()
    {
        m_form.title = QStringLiteral("Спецификация");
        addTitles();
        addUnit();
        addRepresentative();
        addTable();
        addReferrals();
        addDeclaration();
        addInspection();
        return m_form;
    }

private:
    QString nextName(const QString &stem) { return stem + QString::number(++m_fixedCount); }

    void fixed(const QRectF &rect, const QString &value, double size = 7.5, Qt::Alignment alignment = Qt::AlignLeft,
               bool bold = false)
    {
        PageItem item = caption(nextName(QStringLiteral("Fixed")), rect, value, size);
        item.alignment = alignment | (rect.height() > 5.5 ? Qt::AlignTop : Qt::AlignVCenter);
        item.bold = bold;
        m_form.items << item;
    }
    void ruled(const QRectF &rect) { m_form.items << box(nextName(QStringLiteral("Rule")), rect, 0.2); }
    void dotted(const QRectF &rect) { fixed(rect, QString(int(rect.width() / 1.1), u'.'), 7.0); }
    void tick(double x, double top, const QString &title, double width = 26)
    {
        ruled({x, top + 0.8, 3.2, 3.2});
        fixed({x + 4.2, top, width, 5}, title, 7);
    }

    // A ruled box with its caption in the top-left corner and the cell's text below it.
    void field(const QString &cell, const QString &title, const QRectF &rect)
    {
        ruled(rect);
        fixed({rect.left() + 0.8, rect.top() + 0.2, rect.width() - 1.6, 3.2}, title, 6.0);
        m_form.items << text(cell, rect.adjusted(1.0, 3.2, -1.0, -0.3), m_cells.value(cell), 8.5);
    }
    void value(const QString &cell, const QRectF &rect, Qt::Alignment alignment = Qt::AlignRight | Qt::AlignVCenter)
    {
        m_form.items << text(cell, rect.adjusted(1.0, 0, -1.0, 0), m_cells.value(cell), 8.5, alignment);
    }
    void boxes(const BoxField &field, double x, double top, double size = 5.0)
    {
        const QStringList names = field.cellNames();
        for (int n = 0; n < names.size(); ++n)
            m_form.items << digitBoxes(names.at(n), {x + n * size, top, size, size}, m_cells.value(names.at(n)), 0, 1);
    }

    void addTitles();
    void addUnit();
    void addRepresentative();
    void addTable();
    void addTableHead(double top);
    double addSection(const ClaimSection &section, double top);
    double addRow(const ClaimRow &row, double top);
    void addTotal(const QString &title, const QString &cell, double top, bool bold);
    void addReferrals();
    void addDeclaration();
    void addInspection();

    PageDescription m_form;
    QHash<QString, QString> m_cells;
    int m_fixedCount = 0;
};

void SpecificationSheet::addTitles()
{
    fixed({Right - 60, 6, 60, 4}, QStringLiteral("Регистрационен номер на леченото заведение"), 6.5);
    boxes(UnitIdBoxes, Right - 50, 10.5);
    fixed({Left, 18, Width, 7}, QStringLiteral("СПЕЦИФИКАЦИЯ"), 14, Qt::AlignHCenter, true);
    fixed({Left + 8, 25.5, Width - 16, 7.5},
          QStringLiteral("ЗА ИЗВЪРШЕНАТА ДЕНТАЛНА ДЕЙНОСТ ОТ ЛЕЧЕБНОТО ЗАВЕДЕНИЕ ЗА ПЪРВИЧНА ДЕНТАЛНА ПОМОЩ ПО Т.310 "
                         "ал.2 ОТ НРД 2010 година ПО ДОГОВОР №..........................."),
          7.5, Qt::AlignHCenter, true);
    fixed({Left, 34, 112, 7},
          QStringLiteral("за лица, с право на здравно осигуряване, удостоверено от друга държава-членка на ЕС или "
                         "съгласно двъстранни спогодби "),
          7);
    tick(Left + 116, 34.5, QStringLiteral("текуща"));
    tick(Left + 139, 34.5, QStringLiteral("дебитно"));
    tick(Left + 162, 34.5, QStringLiteral("кредитно"));
    fixed({Left, 42, 24, 5}, QStringLiteral("КЪМ ФАКТУРА "), 7.5, Qt::AlignLeft, true);
    dotted({Left + 24, 42, 50, 5});
    fixed({Left + 80, 42, 16, 5}, QStringLiteral("известие "));
    dotted({Left + 96, 42, 40, 5});
    fixed({Left + 140, 42, 10, 5}, QStringLiteral("дата"));
    dotted({Left + 150, 42, 36, 5});
    fixed({Left, 48, 40, 5}, QStringLiteral("Вид на лечебното заведение:"), 7);
    tick(Left + 40, 48, QStringLiteral("индивидуална практика"), 33);
    tick(Left + 80, 48, QStringLiteral("дентален център"), 24);
    tick(Left + 110, 48, QStringLiteral("групова практика"), 24);
    tick(Left + 140, 48, QStringLiteral("медико-дентален център"), 38);
}

void SpecificationSheet::addUnit()
{
    field(QStringLiteral("Label9"), QStringLiteral("Име на леч. заведение"), {Left, 55, Width, 8});
    field(QStringLiteral("Label13"), QStringLiteral("Област"), {Left, 63, 60, 8});
    field(QStringLiteral("Label14"), QStringLiteral("Община"), {Left + 60, 63, 60, 8});
    field(QStringLiteral("Label25"), QStringLiteral("Гр.(с.)"), {Left + 120, 63, 66, 8});
    field(QStringLiteral("Label26"), QStringLiteral("ул."), {Left, 71, 66, 8});
    field(QStringLiteral("Label28"), QStringLiteral("№"), {Left + 66, 71, 16, 8});
    field(QStringLiteral("Label10"), QStringLiteral("ж.к."), {Left + 82, 71, 44, 8});
    field(QStringLiteral("Label8"), QStringLiteral("бл."), {Left + 126, 71, 15, 8});
    field(QStringLiteral("Label34"), QStringLiteral("вх."), {Left + 141, 71, 15, 8});
    field(QStringLiteral("Label32"), QStringLiteral("ет."), {Left + 156, 71, 15, 8});
    field(QStringLiteral("Label30"), QStringLiteral("ап."), {Left + 171, 71, 15, 8});
    field(QStringLiteral("Label16"), QStringLiteral("Банка"), {Left, 79, 56, 8});
    field(QStringLiteral("Label18"), QStringLiteral("BIC"), {Left + 56, 79, 30, 8});
    field(QStringLiteral("Label20"), QStringLiteral("IBAN"), {Left + 86, 79, 62, 8});
    field(QStringLiteral("Label22"), QStringLiteral("БУЛСТАТ"), {Left + 148, 79, 38, 8});
    fixed({Left, 89, 40, 5}, QStringLiteral("ЗА ПЕРИОДА    ОТ:"), 8.5, Qt::AlignLeft, true);
    value(QStringLiteral("Label42"), {Left + 32, 89, 34, 5}, Qt::AlignLeft | Qt::AlignVCenter);
    fixed({Left + 70, 89, 10, 5}, QStringLiteral("ДО:"), 8.5, Qt::AlignLeft, true);
    value(QStringLiteral("Label50"), {Left + 78, 89, 34, 5}, Qt::AlignLeft | Qt::AlignVCenter);
}

void SpecificationSheet::addRepresentative()
{
    fixed({Left, 96, Width, 4}, QStringLiteral("Представляващ лечебното заведение"), 7, Qt::AlignLeft, true);
    field(QStringLiteral("Label54"), QStringLiteral("Име"), {Left, 100.5, 82, 8});
    fixed({Left + 86, 102, 8, 5}, QStringLiteral("ЕГН"));
    boxes(UnitEgnBoxes, Left + 94, 102);
    fixed({Left + 147, 102, 8, 5}, QStringLiteral("ЛПК"));
    boxes(UnitUinBoxes, Left + 155, 102, 31.0 / 9);
}

void SpecificationSheet::addTable()
{
    constexpr double top = 112;
    addTableHead(top);
    double row = top + 9;
    for (const ClaimSection &section : ClaimSections())
        row = addSection(section, row);
    addTotal(GrandTotalText, GrandTotalCell, row, true);
}

void SpecificationSheet::addTableHead(double top)
{
    const std::pair<Column, QString> heads[] = {
        {CodeColumn, QStringLiteral("Код")},
        {ActivityColumn, QStringLiteral("Извършени дейности")},
        {PriceColumn, QStringLiteral("Цена, която НЗОК заплаща (лв.)")},
        {CountColumn, QStringLiteral("Брой")},
        {SumColumn, QStringLiteral("Сума              (лв.)")},
    };
    for (const auto &[column, title] : heads) {
        const QRectF cell(column.left, top, column.width, 9);
        ruled(cell);
        fixed(cell.adjusted(0.8, 0.8, -0.8, -0.5), title, 7, Qt::AlignHCenter, true);
    }
}

double SpecificationSheet::addSection(const ClaimSection &section, double top)
{
    ruled({Left, top, Width, 5});
    fixed({Left + 1, top, 14, 5}, QString::fromUtf8(section.mark), 8, Qt::AlignLeft, true);
    fixed({ActivityColumn.left + 1, top, Width - 20, 5}, QString::fromUtf8(section.title), 8, Qt::AlignLeft, true);
    top += 5;
    for (const ClaimRow &row : section.rows)
        top = addRow(row, top);
    addTotal(QString::fromUtf8(section.totalText), QString::fromLatin1(section.totalCell), top, false);
    return top + 5;
}

double SpecificationSheet::addRow(const ClaimRow &row, double top)
{
    const QString activity = QString::fromUtf8(row.text);
    const double height = activity.size() > 100 ? 10.0 : activity.size() > 60 ? 7.0 : 5.0;
    for (const Column &column : {CodeColumn, ActivityColumn, PriceColumn, CountColumn, SumColumn})
        ruled({column.left, top, column.width, height});
    fixed({CodeColumn.left + 1, top, CodeColumn.width - 2, 5}, QString::fromLatin1(row.code), 8, Qt::AlignHCenter);
    fixed({ActivityColumn.left + 1, top + 0.6, ActivityColumn.width - 2, height - 0.6}, activity, 7);
    fixed({PriceColumn.left + 1, top, PriceColumn.width - 2, 5}, QString::fromLatin1(row.priceCaption), 8,
          Qt::AlignHCenter);
    // Figures stand on the first line of the row, level with the code and the price.
    const QRectF count(CountColumn.left, top, CountColumn.width, 5);
    value(QString::fromLatin1(row.countCell), count);
    if (qstrcmp(row.zeroCountCell, row.countCell) != 0)
        value(QString::fromLatin1(row.zeroCountCell), count);
    if (row.sumCell)
        value(QString::fromLatin1(row.sumCell), {SumColumn.left, top, SumColumn.width, 5});
    return top + height;
}

void SpecificationSheet::addTotal(const QString &title, const QString &cell, double top, bool bold)
{
    ruled({Left, top, SumColumn.left - Left, 5});
    ruled({SumColumn.left, top, SumColumn.width, 5});
    fixed({Left + 1, top, SumColumn.left - Left - 3, 5}, title, 8, Qt::AlignRight, bold);
    value(cell, {SumColumn.left, top, SumColumn.width, 5});
}

void SpecificationSheet::addReferrals()
{
    constexpr double top = 226;
    fixed({Left, top, 60, 5}, QStringLiteral("Отчет за издадени направления"), 8, Qt::AlignLeft, true);
    tick(Left + 70, top, QStringLiteral("за месец"));
    tick(Left + 100, top, QStringLiteral("за тримесечие"));
    const double head = top + 6;
    ruled({Left, head, 100, 5});
    ruled({Left + 100, head, 86, 5});
    fixed({Left + 101, head, 84, 5}, QStringLiteral("Брой назначени направления"), 7.5, Qt::AlignHCenter, true);
    ruled({Left, head + 5, 100, 5});
    fixed({Left + 1, head + 5, 98, 5}, QStringLiteral("Назначени медицински направления бл. МЗ-НЗОК "));
    const QString forms[] = {QStringLiteral(" 3А"), QStringLiteral(" 3"), QStringLiteral(" 4")};
    for (int n = 0; n < 3; ++n) {
        ruled({Left + 100 + n * 28.67, head + 5, 28.67, 5});
        fixed({Left + 101 + n * 28.67, head + 5, 10, 5}, forms[n]);
    }
    ruled({Left, head + 10, 100, 5});
    fixed({Left + 1, head + 10, 98, 5}, QStringLiteral("Назначени направления за ЛКК бл. МЗ-НЗОК "));
    ruled({Left + 100, head + 10, 86, 5});
    fixed({Left + 101, head + 10, 10, 5}, QStringLiteral(" 6"));
}

void SpecificationSheet::addDeclaration()
{
    constexpr double top = 249;
    fixed({Left, top, Width, 7},
          QStringLiteral("Декларирам, че горепосочената информация отговаря на извършените дейности съгласно "
                         "разпоредбите на Решение № РД - УС - 04 - 17/20.01.2009 година на УС на НЗОК"),
          7.5);
    fixed({Left, top + 8, 14, 5}, QStringLiteral("Подпис"));
    dotted({Left + 14, top + 8, 60, 5});
    fixed({Left + 100, top + 8, 10, 5}, QStringLiteral("Дата"));
    dotted({Left + 110, top + 8, 40, 5});
}

void SpecificationSheet::addInspection()
{
    constexpr double top = 265;
    ruled({Left, top, Width, 23});
    fixed({Left + 2, top + 1, 30, 5}, QStringLiteral("Проверили"), 8, Qt::AlignLeft, true);
    fixed({Left + 2, top + 7, 12, 5}, QStringLiteral("Дата:"));
    dotted({Left + 14, top + 7, 36, 5});
    for (int n = 0; n < 3; ++n) {
        fixed({Left + 60, top + 1 + n * 7, 14, 5}, QStringLiteral("Подпис:"));
        dotted({Left + 74, top + 1 + n * 7, 60, 5});
    }
    fixed({Left + 150, top + 8, 30, 5}, QStringLiteral("печат"), 7.5, Qt::AlignHCenter);
}

} // namespace

PageDescription SpecificationPage(const QList<SpecificationCell> &cells) { return SpecificationSheet(cells).build(); }

} // namespace reports
