// Building and drawing a long printed form: a list of N service lines, as the patient record
// and the treatment data print them, paginated and rendered to a PDF in memory; and the
// ambulatory sheet, the one form printed many times a day.

#include "base/Page.h"
#include "base/ui/PrintRenderer.h"
#include "treatment/SheetPrintPage.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QPdfWriter>

#include <benchmark/benchmark.h>

namespace {

print::PageDescription serviceList(int rows)
{
    print::PageDescription form(QStringLiteral("rprBench"), print::A4);
    form.items << print::text(QStringLiteral("Title"), {15, 10, 180, 8}, QStringLiteral("Лечебни данни"), 12);
    form.headOnFirstPageOnly = true;
    form.band.top = 60;
    form.band.bottom = 280;
    form.band.headerHeight = 6;
    form.band.header << print::caption(QStringLiteral("Head"), {15, 0, 180, 6}, QStringLiteral("Дата  Код  Дейност"));
    form.band.rowHeight = 6;
    for (int n = 0; n < rows; ++n)
        form.band.rows << QList<print::PageItem>{
            print::text(QStringLiteral("Data"), {15, 0, 22, 6}, QStringLiteral("02.03.2026")),
            print::digitBoxes(QStringLiteral("KodHelp"), {38, 0.5, 15, 5}, QStringLiteral("3  0  1"), 2, 3),
            print::text(QStringLiteral("TextHelp"), {55, 0, 140, 6},
                        QStringLiteral("Обтурация с химичен композит на зъб %1, „Д'Артанян“").arg(n)),
            print::line(QStringLiteral("Rule"), {15, 6}, {195, 6})};
    return form;
}

qint64 renderToMemory(const print::PageDescription &form)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setResolution(300);
        const Outcome drawn = print::render(form, writer);
        benchmark::DoNotOptimize(drawn.ok());
    }
    return buffer.size();
}

void paginateServiceList(benchmark::State &state)
{
    const print::PageDescription form = serviceList(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(form.pages().size());
}
BENCHMARK(paginateServiceList)->Arg(500)->Unit(benchmark::kMillisecond);

void renderServiceListToPdf(benchmark::State &state)
{
    for (auto _ : state) {
        const qint64 bytes = renderToMemory(serviceList(int(state.range(0))));
        state.counters["pdf_bytes"] = double(bytes);
    }
}
BENCHMARK(renderServiceListToPdf)->Arg(500)->Unit(benchmark::kMillisecond);

void renderAmbulatorySheetToPdf(benchmark::State &state)
{
    SheetData sheet;
    sheet.egn = QStringLiteral("0545101234");
    sheet.patient = {{QStringLiteral("Names"), QStringLiteral("Мария Иванова Петрова")}};
    sheet.hasExam = true;
    sheet.dental = QStringList(52, QStringLiteral("*"));
    for (int n = 0; n < 12; ++n)
        sheet.lines << SheetLine{QStringLiteral("2026-03-02"), QStringLiteral("Caries media"), QStringLiteral("Обтурация"),
                                 QStringLiteral("K  0  2  .  1"), QStringLiteral("3  0  1")};
    for (auto _ : state)
        benchmark::DoNotOptimize(renderToMemory(KartonPage(sheet)));
}
BENCHMARK(renderAmbulatorySheetToPdf)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
