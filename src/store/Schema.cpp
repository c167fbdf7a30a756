#include "store/Schema.h"

namespace store {
namespace {

ColumnDef text(const QString &name) { return {name, QStringLiteral("TEXT")}; }
ColumnDef text(const QString &name, int size) { return {name, QStringLiteral("VARCHAR(%1)").arg(size)}; }
ColumnDef date(const QString &name) { return {name, QStringLiteral("DATE")}; }
ColumnDef number(const QString &name) { return {name, QStringLiteral("REAL")}; }
ColumnDef smallint(const QString &name) { return {name, QStringLiteral("SMALLINT")}; }
ColumnDef yesNo(const QString &name) { return {name, QStringLiteral("BOOLEAN")}; }

QList<ColumnDef> texts(const QStringList &names)
{
    QList<ColumnDef> columns;
    for (const QString &name : names)
        columns << text(name);
    return columns;
}

TableDef pacients()
{
    QList<ColumnDef> columns{text(QStringLiteral("EGN"), 10), text(QStringLiteral("Names")),
                             date(QStringLiteral("DataB")), date(QStringLiteral("DataR")),
                             text(QStringLiteral("Pol"), 1)};
    columns << texts({QStringLiteral("KrGr"), QStringLiteral("Ph"), QStringLiteral("Osob"), QStringLiteral("Nep"),
                      QStringLiteral("ZabOld"), QStringLiteral("ZabNaw"), QStringLiteral("Type"),
                      QStringLiteral("Country"), QStringLiteral("RZOK"), QStringLiteral("ZR"), QStringLiteral("PKod"),
                      QStringLiteral("Tawn"), QStringLiteral("Obsh"), QStringLiteral("Obl"), QStringLiteral("KV"),
                      QStringLiteral("UL"), QStringLiteral("BL"), QStringLiteral("VX"), QStringLiteral("ET"),
                      QStringLiteral("AP"), QStringLiteral("Adres"), QStringLiteral("TKod"), QStringLiteral("DTel"),
                      QStringLiteral("STel"), QStringLiteral("MTel"), QStringLiteral("Fax"), QStringLiteral("Prof"),
                      QStringLiteral("Work"), QStringLiteral("ZBook"), QStringLiteral("RBook"),
                      QStringLiteral("LKod")});
    columns << smallint(QStringLiteral("IDName"));
    return {QStringLiteral("Pacients"), columns};
}

TableDef dental()
{
    QList<ColumnDef> columns{text(QStringLiteral("EGN"), 10)};
    columns << texts(chartFieldNames());
    return {QStringLiteral("Dental"), columns};
}

TableDef help()
{
    return {QStringLiteral("Help"),
            {text(QStringLiteral("EGN"), 10), text(QStringLiteral("Vid")), date(QStringLiteral("Data")),
             text(QStringLiteral("Help")), text(QStringLiteral("KodZab")), text(QStringLiteral("TextHelp")),
             text(QStringLiteral("KodHelp")), yesNo(QStringLiteral("ZK")), text(QStringLiteral("ListID"), 6),
             text(QStringLiteral("KodMedic")), number(QStringLiteral("Cena")), smallint(QStringLiteral("Times")),
             yesNo(QStringLiteral("Schet"))}};
}

TableDef medicUnit()
{
    return {QStringLiteral("MedicUnit"),
            texts({QStringLiteral("UserName"), QStringLiteral("UserID"), QStringLiteral("UserBULSTAT"),
                   QStringLiteral("UserContract"), QStringLiteral("UserUIN"), QStringLiteral("UserMOL"),
                   QStringLiteral("UserEGN"), QStringLiteral("UserIBAN"), QStringLiteral("UserBIC"),
                   QStringLiteral("UserBank"), QStringLiteral("UserSIMP"), QStringLiteral("UserType"),
                   QStringLiteral("UserObMiniCap"), QStringLiteral("UserCountry"), QStringLiteral("UserCity"),
                   QStringLiteral("UserCityID"), QStringLiteral("UserCap"), QStringLiteral("UserKs"),
                   QStringLiteral("UserUl"), QStringLiteral("UserUlID"), QStringLiteral("UserBl"),
                   QStringLiteral("UserVx"), QStringLiteral("UserEt"), QStringLiteral("UserAp"),
                   QStringLiteral("UserTel"), QStringLiteral("UserGSM"), QStringLiteral("UserEmail"),
                   QStringLiteral("UserURL")})};
}

TableDef grafic()
{
    QList<ColumnDef> columns{text(QStringLiteral("KodMedic")), date(QStringLiteral("Data"))};
    columns << texts(diarySlotNames());
    return {QStringLiteral("Grafic"), columns};
}

QList<ColumnDef> referralHead()
{
    return {text(QStringLiteral("EGN"), 10), text(QStringLiteral("ListID"), 6), date(QStringLiteral("Data"))};
}

QList<TableDef> buildClinicTables()
{
    return {
        pacients(),
        dental(),
        help(),
        {QStringLiteral("Medic"), texts({QStringLiteral("Names"), QStringLiteral("EGN"), QStringLiteral("KodMedic"),
                                         QStringLiteral("Password")})},
        medicUnit(),
        {QStringLiteral("Ceny"), {text(QStringLiteral("KodHelp")), text(QStringLiteral("TextHelp")),
                                  number(QStringLiteral("CenaHelp")), text(QStringLiteral("FullHelp"))}},
        {QStringLiteral("CenyZK"), {text(QStringLiteral("Kod")), smallint(QStringLiteral("Times")),
                                    number(QStringLiteral("CenaNad")), number(QStringLiteral("CenaDo"))}},
        grafic(),
        {QStringLiteral("Path"), referralHead() + QList<ColumnDef>{text(QStringLiteral("Nomer")),
                                                                   text(QStringLiteral("SIMP")),
                                                                   text(QStringLiteral("BCD"))}},
        {QStringLiteral("Invest"), referralHead() + QList<ColumnDef>{text(QStringLiteral("Nomer")),
                                                                     text(QStringLiteral("Kod1")),
                                                                     text(QStringLiteral("Kod2"))}},
        {QStringLiteral("Spec"), referralHead() + QList<ColumnDef>{text(QStringLiteral("SISP1")),
                                                                   text(QStringLiteral("SISP2"))}},
        {QStringLiteral("TempKarton"), {date(QStringLiteral("Data")), text(QStringLiteral("Help")),
                                        text(QStringLiteral("TextHelp")), text(QStringLiteral("KodZab")),
                                        text(QStringLiteral("KodHelp"))}},
    };
}

} // namespace

QString TableDef::createStatement() const
{
    QStringList parts;
    if (withKey)
        parts << QStringLiteral("ID INTEGER PRIMARY KEY");
    for (const ColumnDef &column : columns)
        parts << column.name + u' ' + column.type;
    return QStringLiteral("CREATE TABLE %1 (%2)").arg(name, parts.join(QStringLiteral(", ")));
}

QStringList TableDef::columnNames() const
{
    QStringList names;
    for (const ColumnDef &column : columns)
        names << column.name;
    return names;
}

const QList<TableDef> &clinicTables()
{
    static const QList<TableDef> tables = buildClinicTables();
    return tables;
}

const QList<TableDef> &practiceTables()
{
    // One row per setting that every workstation of the practice shares, by name.
    static const QList<TableDef> tables{
        {QStringLiteral("PracticeSettings"), texts({QStringLiteral("Name"), QStringLiteral("Value")})},
    };
    return tables;
}

const QList<TableDef> &referenceTables()
{
    static const QList<TableDef> tables{
        {QStringLiteral("PostCode"), texts({QStringLiteral("PKod"), QStringLiteral("Tawn"), QStringLiteral("Obsh"),
                                            QStringLiteral("Obl"), QStringLiteral("ZK"), QStringLiteral("ZdRn")})},
        {QStringLiteral("Mater"), {text(QStringLiteral("Kod"), 3), text(QStringLiteral("Name"), 30),
                                   {QStringLiteral("Kol"), QStringLiteral("REAL")}, text(QStringLiteral("Ed"), 3)}},
    };
    return tables;
}

const TableDef *findTable(const QList<TableDef> &tables, const QString &name)
{
    for (const TableDef &table : tables)
        if (table.name.compare(name, Qt::CaseInsensitive) == 0)
            return &table;
    return nullptr;
}

QStringList clinicIndexStatements()
{
    return {
        QStringLiteral("CREATE INDEX HelpByEgn ON Help (EGN, Data)"),
        QStringLiteral("CREATE INDEX HelpByMedicDate ON Help (KodMedic, Data)"),
        // The day's minutes are counted from this index alone, without reading the lines.
        QStringLiteral("CREATE INDEX HelpByDate ON Help (Data, KodHelp)"),
        // The next sheet number: a doctor's numbers walked from the greatest down.
        QStringLiteral("CREATE INDEX HelpByMedicList ON Help (KodMedic, ListID, Data)"),
        QStringLiteral("CREATE INDEX PacientsByEgn ON Pacients (EGN)"),
        QStringLiteral("CREATE INDEX PacientsByDoctor ON Pacients (LKod, Names)"),
        QStringLiteral("CREATE INDEX DentalByEgn ON Dental (EGN)"),
        QStringLiteral("CREATE INDEX GraficByMedicDate ON Grafic (KodMedic, Data)"),
        QStringLiteral("CREATE INDEX PathByEgn ON Path (EGN)"),
        QStringLiteral("CREATE INDEX InvestByEgn ON Invest (EGN)"),
        QStringLiteral("CREATE INDEX SpecByEgn ON Spec (EGN)"),
        QStringLiteral("CREATE INDEX CenyZKByKod ON CenyZK (Kod)"),
    };
}

QStringList referenceIndexStatements()
{
    return {QStringLiteral("CREATE INDEX PostCodeByKod ON PostCode (PKod)")};
}

QStringList chartFieldNames()
{
    QStringList names;
    for (int i = 1; i <= 52; ++i)
        names << QStringLiteral("Z%1").arg(i);
    return names;
}

QStringList diarySlotNames()
{
    QStringList names;
    for (int i = 0; i <= 25; ++i)
        names << QStringLiteral("Ch%1").arg(i);
    return names;
}

} // namespace store
