#include "patients/ToothMap.h"

namespace toothmap {
namespace {

// Permanent twins of the milk fields Z1..Z20, and the milk and permanent tooth numbers.
constexpr int permanentTwin[BoxCount] = {24, 25, 26, 27, 28, 29, 30, 31, 32, 33,
                                         40, 41, 42, 43, 44, 45, 46, 47, 48, 49};
constexpr int milkTeeth[BoxCount] = {55, 54, 53, 52, 51, 61, 62, 63, 64, 65,
                                     85, 84, 83, 82, 81, 71, 72, 73, 74, 75};
// Z21..Z52 along the upper row, then along the lower row.
constexpr int permanentTeeth[32] = {18, 17, 16, 15, 14, 13, 12, 11, 21, 22, 23, 24, 25, 26, 27, 28,
                                    48, 47, 46, 45, 44, 43, 42, 41, 31, 32, 33, 34, 35, 36, 37, 38};

QList<Position> buildPositions()
{
    QList<Position> all;
    for (int box = 1; box <= BoxCount; ++box)
        all << Position{box, milkTeeth[box - 1], true, box <= 10, box, permanentTwin[box - 1]};
    for (int field = 21; field <= FieldCount; ++field) {
        int box = 0;
        for (int b = 1; b <= BoxCount; ++b)
            if (permanentTwin[b - 1] == field)
                box = b;
        all << Position{field, permanentTeeth[field - 21], false, field <= 36, box, box ? box : 0};
    }
    return all;
}

QList<int> fieldsInRange(int first, int last)
{
    QList<int> fields;
    for (int field = first; field <= last; ++field)
        fields << field;
    return fields;
}

} // namespace

const QList<Position> &positions()
{
    static const QList<Position> all = buildPositions();
    return all;
}

const Position &position(int field) { return positions().at(field - 1); }

QString fieldName(int field) { return QStringLiteral("Z%1").arg(field); }

int toothOf(int field) { return position(field).tooth; }

const QList<int> &upperRow()
{
    static const QList<int> row = fieldsInRange(21, 36);
    return row;
}

const QList<int> &lowerRow()
{
    static const QList<int> row = fieldsInRange(37, 52);
    return row;
}

int columnOf(int field)
{
    const Position &place = position(field);
    const int permanent = place.milk ? place.twinField : field;
    return int((place.upper ? upperRow() : lowerRow()).indexOf(permanent));
}

const Position *positionOfTooth(int tooth)
{
    for (const Position &place : positions())
        if (place.tooth == tooth)
            return &place;
    return nullptr;
}

int milkFieldOfBox(int box) { return box; }
int permanentFieldOfBox(int box) { return permanentTwin[box - 1]; }

} // namespace toothmap
