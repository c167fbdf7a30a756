#include "reports/forms/Materials.h"

#include "base/Dialogs.h"
#include "reports/PeriodLines.h"
#include "store/Dates.h"
#include "store/Sql.h"

#include <QHash>
#include <QSqlQuery>
#include <QSqlRecord>

#include <optional>

namespace reports {
namespace {

constexpr int RowsPerBarStep = 256;

struct Material final
{
    QVariant Kod;
    QVariant Name;
    std::optional<float> Kol; // Null drops the material out of the report
    QVariant Ed;
};

using NormRow = QList<std::optional<double>>; // M1, M2, ... of one activity code
using Norms = QHash<QString, NormRow>;

std::optional<float> singleOrNull(const QVariant &value)
{
    if (value.isNull())
        return std::nullopt;
    return static_cast<float>(value.toDouble());
}

QVariant storedKol(const std::optional<float> &kol)
{
    return kol ? QVariant(double(*kol)) : QVariant(QMetaType(QMetaType::Double));
}

void addMaterial(const QSqlDatabase &scratch, const Material &material)
{
    store::run(scratch, QStringLiteral("INSERT INTO TempMater (Kod, Name, Kol, Ed) VALUES (?, ?, ?, ?)"),
               {material.Kod, material.Name, storedKol(material.Kol), material.Ed});
}

// TempMater has no key: its rows come back in the order they were added, the materials' order.
QList<Material> readMaterials(const QSqlDatabase &scratch)
{
    QList<Material> materials;
    QSqlQuery rows = store::run(scratch, QStringLiteral("SELECT Kod, Name, Kol, Ed FROM TempMater"));
    while (rows.next())
        materials << Material{rows.value(0), rows.value(1), singleOrNull(rows.value(2)), rows.value(3)};
    return materials;
}

// The whole norm table, read once. A code given twice counts by its first row.
Norms readNorms(const QSqlDatabase &data)
{
    QSqlQuery rows = store::run(data, QStringLiteral("SELECT * FROM RazhNorm ORDER BY ID"));
    const QSqlRecord record = rows.record();
    QList<int> columns;
    for (int i = 1; record.indexOf(QStringLiteral("M%1").arg(i)) >= 0; ++i)
        columns << record.indexOf(QStringLiteral("M%1").arg(i));
    const int code = record.indexOf(QStringLiteral("KodHelp"));
    Norms norms;
    while (rows.next()) {
        NormRow row;
        row.reserve(columns.size());
        for (const int column : columns)
            row << (rows.value(column).isNull() ? std::nullopt : std::optional<double>(rows.value(column).toDouble()));
        const QString kodHelp = rows.value(code).toString();
        if (!norms.contains(kodHelp))
            norms.insert(kodHelp, row);
    }
    return norms;
}

QString lineText(const ServiceLine &line)
{
    return QStringLiteral("пациент с ЕГН %1, дата %2, амб. лист %3").arg(line.EGN, dates::toTyped(line.Data), line.ListID);
}

// The line is read whole only when it is to be named in a message.
const NormRow &normsOf(const Norms &norms, const QSqlDatabase &clinic, qint64 lineId, const QString &code,
                       int materialCount)
{
    const auto found = norms.constFind(code);
    if (found != norms.constEnd() && found->size() >= materialCount)
        return *found;
    const ServiceLine line = ReadLine(clinic, lineId);
    if (found == norms.constEnd())
        throw store::SqlError(QStringLiteral("Няма норма за разход на материали за дейност с код „%1“ (%2).\r"
                                             "Добавете реда на кода в нормите за разход и пуснете справката отново.")
                                  .arg(line.KodHelp, lineText(line)));
    throw store::SqlError(QStringLiteral("Нормите за разход на дейност с код „%1“ (%2) имат %3 колони, "
                                         "а материалите са %4.\rДопълнете нормите и пуснете справката отново.")
                              .arg(line.KodHelp, lineText(line))
                              .arg(found->size())
                              .arg(materialCount));
}

// The quantity is a single: each addition is rounded to single precision, as the sum is kept.
void charge(QList<Material> &materials, const NormRow &norms)
{
    for (int i = 0; i < materials.size(); ++i) {
        std::optional<float> &kol = materials[i].Kol;
        if (!kol)
            continue;
        kol = norms.at(i) ? std::optional<float>(static_cast<float>(double(*kol) + *norms.at(i))) : std::nullopt;
    }
}

void replaceMaterials(const QSqlDatabase &scratch, const QList<Material> &materials)
{
    store::Transaction transaction(scratch);
    store::run(scratch, QStringLiteral("DELETE FROM TempMater"));
    for (const Material &material : materials)
        addMaterial(scratch, material);
    transaction.commit();
}

// A report that could not be made leaves no half-counted table behind.
void emptyMaterials(const QSqlDatabase &scratch)
{
    try {
        store::run(scratch, QStringLiteral("DELETE FROM TempMater"));
    } catch (const store::SqlError &) {
        // The failure that brought us here is what the user is told; this one is in the log.
    }
}

void walkAndCharge(const QSqlDatabase &clinic, const QSqlDatabase &data, const LineFilter &filter, int lineCount,
                   QList<Material> &materials)
{
    const Norms norms = readNorms(data);
    auto progress = dialogs().progress(MaterialsProgressMessage, lineCount);
    int position = 0;
    WalkLineCodes(clinic, filter, [&](qint64 id, const QString &code) {
        charge(materials, normsOf(norms, clinic, id, code, int(materials.size())));
        if (++position % RowsPerBarStep == 0)
            progress->setValue(position);
    });
    progress->setValue(lineCount);
}

} // namespace

Outcome LoadMaterialsList(const QSqlDatabase &data, const QSqlDatabase &scratch)
{
    try {
        store::Transaction transaction(scratch);
        QSqlQuery rows = store::run(data, QStringLiteral("SELECT Kod, Name, Kol, Ed FROM Mater ORDER BY ID"));
        while (rows.next())
            addMaterial(scratch, {rows.value(0), rows.value(1), singleOrNull(rows.value(2)), rows.value(3)});
        transaction.commit();
    } catch (const store::SqlError &error) {
        return Outcome::failure(error.message());
    }
    return Outcome::success();
}

Outcome CalcMaterials(const QSqlDatabase &clinic, const QSqlDatabase &data, const QSqlDatabase &scratch,
                      const Period &period)
{
    const LineFilter filter{period, {}, LineOrder::ByDate}; // every doctor of the practice
    try {
        const int lineCount = CountLines(clinic, filter);
        if (lineCount == 0) {
            dialogs().information(NoMaterialsDataMessage);
        } else {
            QList<Material> materials = readMaterials(scratch);
            walkAndCharge(clinic, data, filter, lineCount, materials);
            replaceMaterials(scratch, materials);
        }
    } catch (const store::SqlError &error) {
        emptyMaterials(scratch);
        return Outcome::failure(error.message());
    }
    dialogs().information(DoneMessage);
    return Outcome::success();
}

} // namespace reports
