#include "treatment/ChartPicture.h"

#include "patients/ToothMap.h"
#include "store/Schema.h"
#include "store/Sql.h"

ChartPicture BuildChartPicture(const ChartFields &fields)
{
    QHash<int, QString> cellText; // permanent field -> what its cell shows
    for (int field = 21; field <= toothmap::FieldCount; ++field)
        cellText.insert(field, fields.value(toothmap::fieldName(field)));
    ChartPicture picture;
    for (int milk = 1; milk <= toothmap::BoxCount; ++milk) {
        const QString code = fields.value(toothmap::fieldName(milk));
        picture.milkShown << !code.isEmpty();
        if (code.isEmpty())
            continue;
        cellText[toothmap::position(milk).twinField] = code.trimmed() == u"*" ? QString() : code;
    }
    for (int field : toothmap::upperRow())
        picture.upper << cellText.value(field);
    for (int field : toothmap::lowerRow())
        picture.lower << cellText.value(field);
    return picture;
}

Result<std::optional<ChartFields>> LoadChart(const QSqlDatabase &clinic, const QString &egn)
{
    using Loaded = Result<std::optional<ChartFields>>;
    try {
        const QStringList names = store::chartFieldNames();
        QSqlQuery row = store::run(clinic,
                                   QStringLiteral("SELECT %1 FROM Dental WHERE EGN = ? ORDER BY ID").arg(names.join(u',')),
                                   {egn});
        if (!row.next())
            return Loaded::success(std::nullopt);
        ChartFields fields;
        for (int i = 0; i < names.size(); ++i)
            fields.insert(names.at(i), row.value(i).toString());
        return Loaded::success(fields);
    } catch (const store::SqlError &error) {
        return Loaded::failure(QStringLiteral("Зъбният статус не може да се прочете: ") + error.message());
    }
}
