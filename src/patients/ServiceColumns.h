#pragma once

#include <QList>
#include <QString>

// The columns of the service grid of the treatment window, in order; the history view beside
// the patient card shows the same without the first and the last.
struct ServiceColumn final
{
    QString field;   // field of Help
    QString caption; // column caption
};

inline const QList<ServiceColumn> &treatmentGridColumns()
{
    static const QList<ServiceColumn> columns{
        {QStringLiteral("Vid"), QStringLiteral("Вид")},
        {QStringLiteral("Data"), QStringLiteral("Дата")},
        {QStringLiteral("Help"), QStringLiteral("Диагноза, статус")},
        {QStringLiteral("KodZab"), QStringLiteral("Код зъб")},
        {QStringLiteral("TextHelp"), QStringLiteral("Лечение")},
        {QStringLiteral("KodHelp"), QStringLiteral("Код дейн.")},
        {QStringLiteral("ZK"), QStringLiteral("Здр. каса")},
        {QStringLiteral("ListID"), QStringLiteral("№ амб.лист")},
    };
    return columns;
}

inline QList<ServiceColumn> historyViewColumns() { return treatmentGridColumns().mid(1, 6); }
