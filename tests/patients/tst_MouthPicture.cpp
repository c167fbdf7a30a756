// The drawn chart from the 52 fields: what each code draws on its tooth, the milk and the
// permanent rows, which tooth of a place is in the mouth, where a click lands, the legend.
#include "patients/ChartCodes.h"
#include "patients/MouthPicture.h"
#include "patients/ToothOutlines.h"

#include <QTest>

using chartmarks::Mark;
using Marks = QList<Mark>;

namespace {

// Z50 is tooth 36, a lower molar without a box.
constexpr int Field = 50;

QStringList chartWith(std::initializer_list<std::pair<int, QString>> fields)
{
    QStringList texts(52, QString());
    for (const auto &[field, text] : fields)
        texts[field - 1] = text;
    return texts;
}

QString tagOf(int field, Mark mark)
{
    return toothmap::fieldName(field) + u':' + chartmarks::nameOf(mark);
}

const Marks AllMarks{Mark::Caries,    Mark::Filling,   Mark::Pulpitis,   Mark::Gangrene,      Mark::Root,
                     Mark::Missing,   Mark::Crown,     Mark::Artificial, Mark::Periodontosis, Mark::Fracture,
                     Mark::Mobility1, Mark::Mobility2, Mark::Mobility3};

// The colour a shape shows its finding in: its fill where it is filled, else its line.
drawing::Rgb shownColour(const drawing::Shape &shape)
{
    return shape.fillStyle == drawing::FillStyle::None ? shape.pen : shape.fill;
}

QRectF boundsOf(const drawing::Shape &shape)
{
    if (shape.points.isEmpty())
        return shape.rect;
    QRectF bounds(shape.points.first(), QSizeF(0, 0));
    for (const QPointF &point : shape.points)
        bounds = bounds.united(QRectF(point, QSizeF(1e-9, 1e-9)));
    return bounds;
}

bool dashedOutline(const mouth::MouthPicture &picture, int field)
{
    const auto outline = picture.drawing.tagged(toothmap::fieldName(field) + QStringLiteral(".outline"));
    return !outline.isEmpty() && outline.first()->dashed;
}

} // namespace

class TestMouthPicture final : public QObject
{
    Q_OBJECT
  private slots:
    void eachCodeDrawsItsFindings_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<Marks>("marks");
        QTest::addColumn<bool>("crownDrawnWhole");
        QTest::newRow("C caries") << "C" << Marks{Mark::Caries} << true;
        QTest::newRow("P pulpitis") << "P" << Marks{Mark::Pulpitis} << true;
        QTest::newRow("G gangrene") << "G" << Marks{Mark::Gangrene} << true;
        QTest::newRow("R root remnant, no crown") << "R" << Marks{Mark::Root} << false;
        QTest::newRow("O filling") << "O" << Marks{Mark::Filling} << true;
        QTest::newRow("E missing, faded") << "E" << Marks{Mark::Missing} << false;
        QTest::newRow("K crown") << "K" << Marks{Mark::Crown} << true;
        QTest::newRow("X artificial") << "X" << Marks{Mark::Artificial} << true;
        QTest::newRow("Pa periodontosis") << "Pa" << Marks{Mark::Periodontosis} << true;
        QTest::newRow("F fracture") << "F" << Marks{Mark::Fracture} << true;
        QTest::newRow("I") << "I" << Marks{Mark::Mobility1} << true;
        QTest::newRow("II") << "II" << Marks{Mark::Mobility2} << true;
        QTest::newRow("III") << "III" << Marks{Mark::Mobility3} << true;
        QTest::newRow("OC filling and caries") << "OC" << Marks{Mark::Filling, Mark::Caries} << true;
        QTest::newRow("OP filling and pulpitis") << "OP" << Marks{Mark::Filling, Mark::Pulpitis} << true;
        QTest::newRow("Rr roots") << "Rr" << Marks{Mark::Root} << false;
        QTest::newRow("star: a tooth, nothing found") << "*" << Marks{} << true;
        QTest::newRow("empty: healthy") << "" << Marks{} << true;
        // The picture follows the typing: what leaving the field will store is drawn at once.
        QTest::newRow("typed 1 is caries already") << "1" << Marks{Mark::Caries} << true;
        QTest::newRow("typed 12 is OC, not caries") << "12" << Marks{Mark::Filling, Mark::Caries} << true;
        QTest::newRow("typed 18 is OP") << "18" << Marks{Mark::Filling, Mark::Pulpitis} << true;
        QTest::newRow("typed 02") << "02" << Marks{Mark::Mobility2} << true;
        QTest::newRow("small letter k") << "k" << Marks{Mark::Crown} << true;
    }
    void eachCodeDrawsItsFindings()
    {
        QFETCH(QString, text);
        QFETCH(Marks, marks);
        QFETCH(bool, crownDrawnWhole);
        const mouth::MouthPicture picture = mouth::drawMouth(chartWith({{Field, text}}));
        QCOMPARE(picture.teeth.at(Field - 1).state.marks, marks);
        for (Mark mark : AllMarks) {
            const auto shapes = picture.drawing.tagged(tagOf(Field, mark));
            QCOMPARE(!shapes.isEmpty(), marks.contains(mark));
            for (const drawing::Shape *shape : shapes)
                QCOMPARE(shownColour(*shape), mouth::colourOf(mark));
        }
        QVERIFY(!picture.drawing.has(toothmap::fieldName(Field) + QStringLiteral(":text")));
        // Each finding is drawn on its own tooth, large enough to be seen.
        const QRectF tooth = picture.teeth.at(Field - 1).box;
        for (Mark mark : marks)
            for (const drawing::Shape *shape : picture.drawing.tagged(tagOf(Field, mark))) {
                const QRectF bounds = boundsOf(*shape);
                QVERIFY2(bounds.width() + bounds.height() > 1.0, qPrintable(chartmarks::nameOf(mark)));
                QVERIFY2(tooth.adjusted(-0.5, -0.5, 0.5, 0.5).contains(bounds), qPrintable(chartmarks::nameOf(mark)));
            }
        QCOMPARE(!dashedOutline(picture, Field), crownDrawnWhole);
    }

    void mobilityDrawsOneLinePerDegree()
    {
        for (const auto &[code, lines] : {std::pair{"I", 1}, std::pair{"II", 2}, std::pair{"III", 3}}) {
            const mouth::MouthPicture picture = mouth::drawMouth(chartWith({{Field, QString::fromLatin1(code)}}));
            const QString tag = toothmap::fieldName(Field) + QStringLiteral(":mobility%1").arg(lines);
            QCOMPARE(picture.drawing.tagged(tag).size(), lines);
        }
    }

    void unknownTextIsShownAsItStands_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("a word") << "МОСТ";
        QTest::newRow("Pa upper-cased by a leaving is no code") << "PA";
        QTest::newRow("two codes in one field are no code") << "1 8";
        QTest::newRow("a blank before a code") << " 1";
    }
    void unknownTextIsShownAsItStands()
    {
        QFETCH(QString, text);
        const mouth::MouthPicture picture = mouth::drawMouth(chartWith({{Field, text}}));
        const auto shown = picture.drawing.tagged(toothmap::fieldName(Field) + QStringLiteral(":text"));
        QCOMPARE(shown.size(), 1);
        QCOMPARE(shown.first()->text, text);
        QVERIFY(shown.first()->textHeight >= 2.0);
        QVERIFY(shown.first()->rect.contains(picture.teeth.at(Field - 1).box.center().x(),
                                             shown.first()->rect.center().y()));
        QVERIFY(shown.first()->rect.width() >= picture.teeth.at(Field - 1).box.width());
        QVERIFY(picture.teeth.at(Field - 1).state.marks.isEmpty());
    }

    void everyToothStandsInItsRowAndColumn()
    {
        const mouth::MouthPicture picture = mouth::drawMouth(chartWith({}));
        QCOMPARE(picture.teeth.size(), 52);
        const auto topOf = [&](int field) { return picture.teeth.at(field - 1).box.top(); };
        // From the top: upper permanent, upper milk, lower milk, lower permanent.
        QVERIFY(topOf(21) < topOf(1) && topOf(1) < topOf(11) && topOf(11) < topOf(37));
        for (const toothmap::Position &place : toothmap::positions()) {
            const mouth::Tooth &tooth = picture.teeth.at(place.field - 1);
            QCOMPARE(tooth.tooth, place.tooth);
            const auto number = picture.drawing.tagged(toothmap::fieldName(place.field) + QStringLiteral(".number"));
            QCOMPARE(number.size(), 1);
            QCOMPARE(number.first()->text, QString::number(place.tooth));
            QCOMPARE(topOf(place.field), topOf(place.upper ? (place.milk ? 1 : 21) : (place.milk ? 11 : 37)));
            if (place.milk) // a milk tooth stands over or under its permanent twin
                QCOMPARE(tooth.box.center().x(), picture.teeth.at(place.twinField - 1).box.center().x());
        }
        // 18 at the far left of the upper row, 28 at the far right, 11 and 21 either side of the middle.
        const auto xOf = [&](int field) { return picture.teeth.at(field - 1).box.center().x(); };
        QVERIFY(xOf(21) < xOf(28) && xOf(28) < xOf(29) && xOf(29) < xOf(36));
        QVERIFY(xOf(37) < xOf(44) && xOf(44) < xOf(45) && xOf(45) < xOf(52));
    }

    void kindsOfTeeth_data()
    {
        QTest::addColumn<int>("tooth");
        QTest::addColumn<int>("kind");
        using toothoutlines::Kind;
        QTest::newRow("11 incisor") << 11 << int(Kind::Incisor);
        QTest::newRow("42 incisor") << 42 << int(Kind::Incisor);
        QTest::newRow("23 canine") << 23 << int(Kind::Canine);
        QTest::newRow("14 premolar") << 14 << int(Kind::Premolar);
        QTest::newRow("35 premolar") << 35 << int(Kind::Premolar);
        QTest::newRow("36 molar") << 36 << int(Kind::Molar);
        QTest::newRow("18 molar") << 18 << int(Kind::Molar);
        QTest::newRow("milk 53 canine") << 53 << int(Kind::Canine);
        QTest::newRow("milk 84 is a molar") << 84 << int(Kind::Molar);
        QTest::newRow("milk 65 is a molar") << 65 << int(Kind::Molar);
        QTest::newRow("milk 71 incisor") << 71 << int(Kind::Incisor);
    }
    void kindsOfTeeth()
    {
        QFETCH(int, tooth);
        QTEST(int(toothoutlines::kindOf(tooth)), "kind");
    }

    // The box of a place says which of its two teeth is in the mouth; the other is drawn faded.
    // Molars have no milk twin and are always in.
    void switchSaysWhichToothOfThePlaceIsIn()
    {
        mouth::MilkPlaces milk{};
        const mouth::MouthPicture permanent = mouth::drawMouth(chartWith({}), milk);
        milk[0] = true;  // Check1: Z1 (55) / Z24 (15)
        milk[10] = true; // Check11: Z11 (85) / Z40 (45)
        const mouth::MouthPicture switched = mouth::drawMouth(chartWith({}), milk);
        for (const auto &[milkField, permanentField] : {std::pair{1, 24}, std::pair{11, 40}}) {
            QVERIFY(!permanent.teeth.at(milkField - 1).present && dashedOutline(permanent, milkField));
            QVERIFY(permanent.teeth.at(permanentField - 1).present && !dashedOutline(permanent, permanentField));
            QVERIFY(switched.teeth.at(milkField - 1).present && !dashedOutline(switched, milkField));
            QVERIFY(!switched.teeth.at(permanentField - 1).present && dashedOutline(switched, permanentField));
        }
        QVERIFY(!switched.teeth.at(1).present);                                   // Z2, its box off
        QVERIFY(switched.teeth.at(20).present && permanent.teeth.at(20).present); // Z21, tooth 18
    }

    // A chart read from the store shows a place as milk when its milk field holds something,
    // as the card does when it comes to the front; findings of the tooth not in the mouth still show.
    void storedChartShowsMilkWhereTheMilkFieldHoldsSomething()
    {
        const QStringList texts = chartWith({{1, "*"}, {2, "P"}, {3, "  "}, {25, "C"}});
        const mouth::MilkPlaces milk = mouth::milkPlacesOf(texts);
        QVERIFY(milk[0] && milk[1] && !milk[2]);
        QCOMPARE(std::count(milk.begin(), milk.end(), true), 2);
        const mouth::MouthPicture picture = mouth::drawMouth(texts);
        QVERIFY(picture.teeth.at(1).present && !picture.teeth.at(24).present);
        QVERIFY(picture.drawing.has(QStringLiteral("Z2:pulpitis")) &&
                picture.drawing.has(QStringLiteral("Z25:caries")));
    }

    void aClickLandsOnItsTooth()
    {
        const mouth::MouthPicture picture = mouth::drawMouth(chartWith({}));
        for (const mouth::Tooth &tooth : picture.teeth) {
            QCOMPARE(picture.fieldAt(tooth.box.center()), tooth.field);
            const auto number = picture.drawing.tagged(toothmap::fieldName(tooth.field) + QStringLiteral(".number"));
            QCOMPARE(picture.fieldAt(number.first()->rect.center()), tooth.field);
        }
        // Between the halves of the mouth, between the jaws, on the legend: no tooth.
        const mouth::Tooth &t11 = picture.teeth.at(27);
        const mouth::Tooth &t21 = picture.teeth.at(28);
        QCOMPARE(picture.fieldAt({(t11.area.right() + t21.area.left()) / 2, t11.box.center().y()}), 0);
        QCOMPARE(picture.fieldAt(
                     {t11.box.center().x(), (picture.teeth.at(0).area.bottom() + picture.teeth.at(10).area.top()) / 2}),
                 0);
        const auto legendWord = picture.drawing.tagged(QStringLiteral("legend:caries.word"));
        QCOMPARE(picture.fieldAt(legendWord.first()->rect.center()), 0);
    }

    // Every colour of the picture is named in the legend by the chart's own word for its code.
    void legendNamesEveryColourInTheChartsWords()
    {
        const mouth::MouthPicture picture = mouth::drawMouth(chartWith({}));
        QHash<QString, QString> chartWord;
        for (const chartcodes::EntryCode &code : chartcodes::entryCodes())
            chartWord.insert(code.stored, code.legend);
        QCOMPARE(chartmarks::legend().size(), AllMarks.size());
        for (Mark mark : AllMarks) {
            const auto entry = std::find_if(chartmarks::legend().begin(), chartmarks::legend().end(),
                                            [&](const chartmarks::LegendEntry &e) { return e.mark == mark; });
            QVERIFY(entry != chartmarks::legend().end());
            QVERIFY(!entry->word.isEmpty());
            QCOMPARE(entry->word, chartWord.value(entry->code));
            const QString tag = QStringLiteral("legend:") + chartmarks::nameOf(mark);
            QCOMPARE(picture.drawing.tagged(tag + QStringLiteral(".word")).first()->text, entry->word);
            const auto sample = picture.drawing.tagged(tag + u':' + chartmarks::nameOf(mark));
            QVERIFY(!sample.isEmpty());
            QCOMPARE(shownColour(*sample.first()), mouth::colourOf(mark));
        }
        QCOMPARE(chartmarks::wordOf(Mark::Filling), QStringLiteral("обтулация"));
        QCOMPARE(chartmarks::wordOf(Mark::Mobility1), QStringLiteral("I ст.подвижост"));
    }

    // On a black-and-white printer the findings of one part of a tooth stay apart in grey, and
    // none fades into the white paper.
    void greysStayApartOnBlackAndWhitePaper_data()
    {
        QTest::addColumn<Marks>("onOnePart");
        QTest::newRow("crown") << Marks{Mark::Caries, Mark::Filling, Mark::Artificial};
        QTest::newRow("root") << Marks{Mark::Pulpitis, Mark::Gangrene, Mark::Root};
    }
    void greysStayApartOnBlackAndWhitePaper()
    {
        QFETCH(Marks, onOnePart);
        for (qsizetype a = 0; a < onOnePart.size(); ++a)
            for (qsizetype b = a + 1; b < onOnePart.size(); ++b) {
                const int apart = std::abs(drawing::greyOf(mouth::colourOf(onOnePart.at(a))) -
                                           drawing::greyOf(mouth::colourOf(onOnePart.at(b))));
                QVERIFY2(apart >= 40,
                         qPrintable(chartmarks::nameOf(onOnePart.at(a)) + u'/' + chartmarks::nameOf(onOnePart.at(b))));
            }
        for (Mark mark : AllMarks)
            QVERIFY2(drawing::greyOf(mouth::colourOf(mark)) <= 200, qPrintable(chartmarks::nameOf(mark)));
    }
};

QTEST_GUILESS_MAIN(TestMouthPicture)
#include "tst_MouthPicture.moc"
