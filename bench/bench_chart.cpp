// The drawn chart, which is drawn again on every keystroke in a tooth field: building the
// picture from the 52 fields, and painting it at the card's size. Together they must stay
// well under 5 ms so that typing never lags.
#include "base/ui/DrawingPainter.h"
#include "patients/MouthPicture.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

namespace {

// A busy mouth: every code of the chart, an unknown text, milk teeth in half the places.
QStringList busyChart()
{
    const QStringList codes{QStringLiteral("C"),   QStringLiteral("P"),   QStringLiteral("G"),  QStringLiteral("R"),
                            QStringLiteral("O"),   QStringLiteral("E"),   QStringLiteral("K"),  QStringLiteral("X"),
                            QStringLiteral("Pa"),  QStringLiteral("F"),   QStringLiteral("I"),  QStringLiteral("II"),
                            QStringLiteral("III"), QStringLiteral("OC"),  QStringLiteral("OP"), QStringLiteral("Rr"),
                            QStringLiteral("*"),   QStringLiteral("МОСТ")};
    QStringList texts;
    for (int field = 1; field <= 52; ++field)
        texts << (field <= 20 && field % 2 ? QString() : codes.at(field % codes.size()));
    return texts;
}

void buildPicture(benchmark::State &state)
{
    const QStringList texts = busyChart();
    for (auto _ : state)
        benchmark::DoNotOptimize(mouth::drawMouth(texts));
}
BENCHMARK(buildPicture)->Unit(benchmark::kMicrosecond);

// Built and painted, as one keystroke in the card costs, at the least and the most width a
// window gives the picture.
void buildAndPaint(benchmark::State &state)
{
    const QStringList texts = busyChart();
    QImage image(int(state.range(0)), int(state.range(0)) * 7 / 10, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        const mouth::MouthPicture picture = mouth::drawMouth(texts);
        image.fill(Qt::white);
        QPainter painter(&image);
        drawing::paint(painter, picture.drawing, image.rect());
    }
}
BENCHMARK(buildAndPaint)->Arg(420)->Arg(900)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
