// The stomatology XML report: the document line for line, the values the fund's format shapes,
// escaping that keeps every document parseable, the refusals that make no document, and the
// write that never loses an earlier file.
#include "TestPractice.h"

#include "base/RunState.h"
#include "reports/Period.h"
#include "reports/PeriodLines.h"
#include "reports/xml/StomatologyXml.h"
#include "reports/xml/XmlValues.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QFile>
#include <QSysInfo>
#include <QTest>
#include <QXmlStreamReader>

#include <csignal>
#include <optional>

#include <sys/resource.h>
#include <unistd.h>

using namespace reports;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString Doctor = u"D1"_s;
const QDate Today(2026, 4, 3);
const QString Maria = validEgn(QDate(1980, 5, 7), false);
const QString Georgi = validEgn(QDate(1975, 11, 30));

Period march()
{
    return CheckPeriod(u"01.03.2026"_s, u"31.03.2026"_s).period;
}

void insert(const QString &table, const QVariantMap &values)
{
    QStringList marks;
    for (int i = 0; i < values.size(); ++i)
        marks << u"?"_s;
    QSqlQuery query(store::clinicDb());
    QVERIFY(query.prepare(u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(table, values.keys().join(u','), marks.join(u','))));
    for (const QVariant &value : values)
        query.addBindValue(value);
    QVERIFY2(query.exec(), qPrintable(query.lastError().text()));
}

void addLine(const QString &egn, const QString &date, const QString &kod, const QVariant &cena, const QString &listId,
             const QVariantMap &more = {}, const QString &doctor = Doctor)
{
    QVariantMap row{{u"EGN"_s, egn},   {u"Data"_s, date},     {u"KodHelp"_s, kod},
                    {u"Cena"_s, cena}, {u"ListID"_s, listId}, {u"KodMedic"_s, doctor}};
    row.insert(more);
    insert(u"Help"_s, row);
}

void addCard(const QString &egn, const QString &names, const QString &born, const QVariantMap &more = {})
{
    QVariantMap row{{u"EGN"_s, egn}, {u"Names"_s, names}, {u"DataB"_s, born}};
    row.insert(more);
    insert(u"Pacients"_s, row);
}

void addUnit()
{
    store::run(store::clinicDb(), u"DELETE FROM MedicUnit"_s); // a new file comes with an empty row
    insert(u"MedicUnit"_s, {{u"UserName"_s, u" ДЗ „Усмивка“ ООД "_s}, {u"UserBULSTAT"_s, u"123456789"_s},
                            {u"UserID"_s, u"2201234567"_s}, {u"UserContract"_s, u"22/123"_s},
                            {u"UserUIN"_s, u" 2200000001 "_s}});
}

// Maria: a chart, two lines, referrals of every kind (and a Path row of another sheet of
// hers). Georgi: two words of name, no chart, a line of price 0, no referral.
void addReferralsAndCharts()
{
    insert(u"Dental"_s, {{u"EGN"_s, Maria}, {u"Z1"_s, u"K"_s}, {u"Z3"_s, u"*"_s}, {u"Z21"_s, u"E"_s},
                         {u"Z22"_s, u" "_s}, {u"Z23"_s, u"*"_s}, {u"Z52"_s, u"C "_s}});
    const auto referral = [](const QString &table, const QString &listId, const QString &date, QVariantMap more) {
        more.insert({{u"EGN"_s, Maria}, {u"ListID"_s, listId}, {u"Data"_s, date}});
        insert(table, more);
    };
    referral(u"Path"_s, u"000009"_s, u"2026-03-01"_s, {{u"Nomer"_s, u"76"_s}});
    referral(u"Path"_s, u"000001"_s, u"2026-03-05"_s, {{u"Nomer"_s, u" 77"_s}, {u"SIMP"_s, u"2201"_s}, {u"BCD"_s, u"B12"_s}});
    referral(u"Path"_s, u"000001"_s, u"2026-03-06"_s, {{u"Nomer"_s, u"78"_s}});
    referral(u"Invest"_s, u"000001"_s, u"2026-03-06"_s, {{u"Nomer"_s, u"88"_s}, {u"Kod1"_s, u"1012"_s}, {u"Kod2"_s, u" 10"_s}});
    referral(u"Spec"_s, u"000001"_s, u"2026-03-05"_s, {{u"SISP1"_s, u"61"_s}, {u"SISP2"_s, u"62"_s}});
    referral(u"Spec"_s, u"000001"_s, u"2026-03-12"_s, {{u"SISP1"_s, u"64"_s}, {u"SISP2"_s, u" "_s}});
}

void addTwoPatients()
{
    addUnit();
    addCard(Maria, u"Мария Иванова Петрова"_s, u"1980-05-07"_s,
            {{u"Type"_s, u"1"_s}, {u"Country"_s, u"BG"_s}, {u"RZOK"_s, u"22"_s}, {u"ZR"_s, u"01"_s},
             {u"ZBook"_s, u"12345"_s}, {u"Nep"_s, u"пеницилин"_s}, {u"ZabNaw"_s, u"диабет"_s}});
    addCard(Georgi, u"Георги Стоянов"_s, u"1975-11-30"_s);
    addReferralsAndCharts();
    addLine(Georgi, u"2026-03-10"_s, u"101"_s, 0.0, u"000002"_s);
    addLine(Maria, u"2026-03-05"_s, u"301"_s, 17.99, u"000001"_s,
            {{u"Help"_s, u"Кариес"_s}, {u"KodZab"_s, u"16"_s}, {u"Times"_s, 26}});
    addLine(Maria, u"2026-03-02"_s, u"101"_s, 12.05, u"000001"_s, {{u"Help"_s, u" Преглед "_s}, {u"Times"_s, 15}});
    // Another doctor's line and one of the doctor's outside the period stay out.
    addLine(Maria, u"2026-03-05"_s, u"508"_s, 30.0, u"000001"_s, {}, u"D2"_s);
    addLine(Maria, u"2026-04-01"_s, u"509"_s, 30.0, u"000003"_s);
}

// The document's first two lines, with the unit's attributes as given.
QString documentHead(const QString &unit)
{
    const QString host = u"http://"_s + QSysInfo::machineHostName();
    return u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<report %1"_s.arg(unit) +
           u"reportingDate=\"2026-4-3\" startFrom=\"2026-03-01\" endTo=\"2026-03-31\" stomType=\"0\" "
           "xsi:schemaLocation=\"%1 ImportStomatologyReport.xsd\" xmlns=\"%1\" "
           "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">\n"_s.arg(host);
}

QString tooth(int code, const QString &status)
{
    return u"<tooth toothCode=\"%1\">\n<toothStatuses>\n<toothStatus toothStatusCode=\"%2\"/>\n"
           "</toothStatuses>\n</tooth>\n"_s.arg(code)
               .arg(status);
}

QString diseases(const QString &allergy, const QString &past, const QString &current)
{
    return u"<allergies>\n<allergy allergyName=\"%1\"/>\n</allergies>\n<pastDiseases>\n"
           "<pastDisease name=\"%2\"/>\n</pastDiseases>\n<currentDiseases>\n"
           "<currentDisease name=\"%3\"/>\n</currentDiseases>\n"_s.arg(allergy, past, current);
}

QString expectedDocument()
{
    return documentHead(u"medicalUnit=\"ДЗ „Усмивка“ ООД\" bulstat=\"123456789\" RHCCode=\"2201234567\" "
                        "contractNo=\"22/123\" odpCode=\"00\" physPersonalProfCode=\"2200000001\" "
                        "insuranceHouse=\"22\" "_s) +
           u"<dentalCareServices>\n"_s +
           u"<dentalCareService personType=\"1\" personIdentifier=\"%1\" countryCode=\"BG\" RHIFCode=\"22\" "
           "healthRegionCode=\"01\" birthDate=\"1980-05-07\" personFirstName=\"Мария\" "
           "personMiddleName=\"Иванова\" personLastName=\"Петрова\" specificationType=\"\" "
           "ambulatorySheetNo=\"000001\" HIRBNo=\"12345\" unfavorableCondition=\"0\">\n"_s.arg(Maria) +
           diseases(u"пеницилин"_s, {}, u"диабет"_s) + u"<teeth>\n"_s + tooth(55, u"K"_s) + tooth(18, u"E"_s) +
           tooth(16, u"*"_s) + tooth(38, u"C "_s) + u"</teeth>\n<services>\n"_s +
           u"<service date=\"2026-03-02\" diagnosis=\"Преглед\" toothCode=\"\" activityCode=\"101\" "
           "repPrice=\"12.5\" numberOfMinutes=\"15\"/>\n"
           "<service date=\"2026-03-05\" diagnosis=\"Кариес\" toothCode=\"16\" activityCode=\"301\" "
           "repPrice=\"17.99\" numberOfMinutes=\"26\"/>\n</services>\n"
           "<prescMedicalPathways>\n"
           "<prescMedicalPathway pathwayNo=\"77\" date=\"2026-3-5\" ODPCode=\"2201\" HSACode=\"B12\"/>\n"
           "</prescMedicalPathways>\n<prescMDAs>\n<prescMDA pathwayNo=\"88\" date=\"2026-3-6\">\n"
           "<codes>\n<code name=\"10.12\"/>\n<code name=\"10.\"/>\n</codes>\n</prescMDA>\n</prescMDAs>\n"
           "<prescSpecialists>\n<prescSpecialist SODPCode=\"61\" SODPCodeSecond=\"62\" date=\"2026-3-5\"/>\n"
           "<prescSpecialist SODPCode=\"64\" date=\"2026-3-12\"/>\n</prescSpecialists>\n"
           "</dentalCareService>\n"_s +
           u"<dentalCareService personType=\"\" personIdentifier=\"%1\" countryCode=\"\" RHIFCode=\"\" "
           "healthRegionCode=\"\" birthDate=\"1975-11-30\" personFirstName=\"Георги\" "
           "personMiddleName=\"\" personLastName=\"Стоянов\" specificationType=\"\" "
           "ambulatorySheetNo=\"000002\" HIRBNo=\"\" unfavorableCondition=\"0\">\n"_s.arg(Georgi) +
           diseases({}, {}, {}) +
           u"<teeth>\n</teeth>\n<services>\n"
           "<service date=\"2026-03-10\" diagnosis=\"\" toothCode=\"\" activityCode=\"101\" "
           "repPrice=\"0.0\" numberOfMinutes=\"\"/>\n</services>\n"
           "<prescMedicalPathways>\n<prescMedicalPathway pathwayNo=\"\" date=\"\" ODPCode=\"\" HSACode=\"\"/>\n"
           "</prescMedicalPathways>\n<prescMDAs>\n"
           "<prescMDA pathwayNo=\"\" date=\"\" ODPCode=\"\" HSACode=\"\">\n<codes>\n<code name=\"\"/>\n"
           "</codes>\n</prescMDA>\n</prescMDAs>\n<prescSpecialists>\n"
           "<prescSpecialist SODPCode=\"\" date=\"\"/>\n</prescSpecialists>\n</dentalCareService>\n"
           "</dentalCareServices>\n</report>\n"_s;
}

// The report of March; a refusal fails the test with its message.
XmlReport built()
{
    auto report = BuildStomatologyXml(store::clinicDb(), march(), Doctor, Today);
    if (!report)
        QTest::qFail(qPrintable(report.error()), __FILE__, __LINE__);
    return report ? report.value() : XmlReport{};
}

// The document parsed; every attribute of the named element, one map per element.
QList<QXmlStreamAttributes> parsed(const QByteArray &document, const QString &element, QString *error)
{
    QXmlStreamReader reader(document);
    QList<QXmlStreamAttributes> found;
    while (!reader.atEnd())
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == element)
            found << reader.attributes();
    if (reader.hasError())
        *error = reader.errorString();
    return found;
}

// A disk that fills up half-way through a write, which even the superuser cannot write past.
class FileSizeLimit final
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_saved);
        rlimit limited = m_saved;
        limited.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &m_saved); }

private:
    rlimit m_saved{};
};

QString attr(const QXmlStreamAttributes &attributes, const char *name)
{
    return attributes.value(QLatin1StringView(name)).toString();
}

} // namespace

class TestStomatologyXml final : public QObject
{
    Q_OBJECT
private slots:
    void documentLineForLine()
    {
        TestPractice practice;
        addTwoPatients();
        const XmlReport report = built();
        QVERIFY(report.document.startsWith("\xEF\xBB\xBF"));
        const QString text = QString::fromUtf8(report.document.mid(3));
        QVERIFY(text.endsWith(u"</report>\r\n"_s));
        QCOMPARE(text.split(u"\r\n"_s), expectedDocument().split(u'\n'));
        QCOMPARE(report.sheets, 2);
        QCOMPARE(report.exportUin, u"2200000001"_s);
        QCOMPARE(run().ExportUin, u"2200000001"_s);
        QCOMPARE(practice.dialogs().messages, QStringList{DoneMessage});
        QCOMPARE(practice.dialogs().progressShown, 1);
        QString error;
        QCOMPARE(parsed(report.document, u"dentalCareService"_s, &error).size(), 2);
        QVERIFY2(error.isEmpty(), qPrintable(error));
    }

    void emptyPeriodWithoutUnit()
    {
        TestPractice practice;
        store::run(store::clinicDb(), u"DELETE FROM MedicUnit"_s); // an older file may have no row
        run().ExportUin = u"earlier"_s;
        const XmlReport report = built();
        QCOMPARE(QString::fromUtf8(report.document.mid(3)).split(u"\r\n"_s),
                 (documentHead(u"medicalUnit=\"\" bulstat=\"\" RHCCode=\"\" contractNo=\"\" odpCode=\"\" "
                               "physPersonalProfCode=\"\" insuranceHouse=\"\" "_s) +
                  u"<dentalCareServices>\n</dentalCareServices>\n</report>\n"_s)
                     .split(u'\n'));
        QCOMPARE(report.sheets, 0);
        QCOMPARE(report.exportUin, u"earlier"_s);
        QCOMPARE(practice.dialogs().messages, QStringList{DoneMessage});
        QString error;
        parsed(report.document, u"report"_s, &error);
        QVERIFY2(error.isEmpty(), qPrintable(error));
    }

    // Every sheet of a patient carries all his lines of the period; sheets go by number, and
    // a number two patients share (two years of one doctor) keeps the order of their first lines.
    void patientServicesUnderEachSheet()
    {
        TestPractice practice;
        addCard(Maria, u"Мария"_s, u"1980-05-07"_s);
        addCard(Georgi, u"Георги"_s, u"1975-11-30"_s);
        addLine(Georgi, u"2026-03-20"_s, u"101"_s, 10.0, u"000001"_s);
        addLine(Maria, u"2026-03-09"_s, u"301"_s, 10.0, u"000005"_s);
        addLine(Maria, u"2026-03-02"_s, u"101"_s, 10.0, u"000001"_s);
        addLine(Maria, u"2026-03-03"_s, u"101"_s, 10.0, u"000001"_s);
        const XmlReport report = built();
        QString error;
        QStringList sheets;
        for (const auto &attributes : parsed(report.document, u"dentalCareService"_s, &error))
            sheets << attr(attributes, "personIdentifier") + u' ' + attr(attributes, "ambulatorySheetNo");
        QCOMPARE(sheets, (QStringList{Georgi + u" 000001"_s, Maria + u" 000001"_s, Maria + u" 000005"_s}));
        QStringList services;
        for (const auto &attributes : parsed(report.document, u"service"_s, &error))
            services << attr(attributes, "date") + u' ' + attr(attributes, "activityCode");
        const QStringList marias{u"2026-03-02 101"_s, u"2026-03-03 101"_s, u"2026-03-09 301"_s};
        QCOMPARE(services, QStringList{u"2026-03-20 101"_s} + marias + marias);
        QVERIFY2(error.isEmpty(), qPrintable(error));
    }

    void valuesComeBackFromTheParser_data()
    {
        QTest::addColumn<QString>("names");
        QTest::addColumn<QString>("diagnosis");
        QTest::newRow("ampersand, less-than, quotes") << u"Д&Г <Ко> \"Петров\""_s << u"a < b & c > d"_s;
        QTest::newRow("apostrophe") << u"Д'Арк Мария О'Нийл"_s << u"it's"_s;
        QTest::newRow("tab, line breaks") << u"Иван\tИванов Петров"_s << u"ред 1\r\nред 2\tкрай"_s;
        QTest::newRow("entity-like text") << u"&amp; &#10; ]]>"_s << u"&lt;"_s;
    }
    void valuesComeBackFromTheParser()
    {
        QFETCH(QString, names);
        QFETCH(QString, diagnosis);
        TestPractice practice;
        addCard(Maria, names, u"1980-05-07"_s, {{u"Nep"_s, diagnosis}});
        addLine(Maria, u"2026-03-02"_s, u"101"_s, 1.0, u"000001"_s, {{u"Help"_s, diagnosis}});
        const XmlReport report = built();
        QString error;
        const auto patients = parsed(report.document, u"dentalCareService"_s, &error);
        const auto services = parsed(report.document, u"service"_s, &error);
        const auto allergies = parsed(report.document, u"allergy"_s, &error);
        QVERIFY2(error.isEmpty(), qPrintable(error));
        QCOMPARE(patients.size(), 1);
        const PersonName name = SplitPersonName(names);
        QCOMPARE(attr(patients[0], "personFirstName"), name.first);
        QCOMPARE(attr(patients[0], "personMiddleName"), name.middle);
        QCOMPARE(attr(patients[0], "personLastName"), name.last);
        QCOMPARE(attr(services.value(0), "diagnosis"), diagnosis);
        QCOMPARE(attr(allergies.value(0), "allergyName"), diagnosis);
    }

    void nameSplitting_data()
    {
        QTest::addColumn<QString>("names");
        QTest::addColumn<QStringList>("parts");
        QTest::newRow("three words") << u"Иван Петров Иванов"_s << QStringList{u"Иван"_s, u"Петров"_s, u"Иванов"_s};
        QTest::newRow("two words") << u"Иван Петров"_s << QStringList{u"Иван"_s, QString(), u"Петров"_s};
        QTest::newRow("one word") << u"Иван"_s << QStringList{QString(), QString(), u"Иван"_s};
        QTest::newRow("four words") << u"Анна Мария Петрова Иванова"_s
                                    << QStringList{u"Анна"_s, u"Мария"_s, u"Петрова Иванова"_s};
        QTest::newRow("two blanks between")
            << u"Иван  Петров Иванов"_s << QStringList{u"Иван"_s, u"Петров"_s, u"Иванов"_s};
        QTest::newRow("leading blank") << u" Иван Петров"_s << QStringList{QString(), u"Иван"_s, u"Петров"_s};
        QTest::newRow("empty") << QString() << QStringList{QString(), QString(), QString()};
    }
    void nameSplitting()
    {
        QFETCH(QString, names);
        QFETCH(QStringList, parts);
        const PersonName name = SplitPersonName(names);
        QCOMPARE((QStringList{name.first, name.middle, name.last}), parts);
    }

    void priceShape_data()
    {
        QTest::addColumn<double>("cena");
        QTest::addColumn<QString>("shape"); // empty: no shape, the report is refused
        QTest::newRow("zero") << 0.0 << u"0.0"_s;
        QTest::newRow("odd cents unpadded") << 12.05 << u"12.5"_s;
        QTest::newRow("binary 17.99") << 17.99 << u"17.99"_s;
        QTest::newRow("binary 0.29") << 0.29 << u"0.29"_s;
        QTest::newRow("half lev") << 12.5 << u"12.50"_s;
        QTest::newRow("whole") << 21.0 << u"21.0"_s;
        QTest::newRow("largest") << 32767.99 << u"32767.99"_s;
        QTest::newRow("too large") << 32768.0 << QString();
        QTest::newRow("negative") << -0.5 << QString();
    }
    void priceShape()
    {
        QFETCH(double, cena);
        QFETCH(QString, shape);
        QCOMPARE(RepPrice(cena).value_or(QString()), shape);
    }

    void refusals_data()
    {
        QTest::addColumn<QVariant>("cena");
        QTest::addColumn<bool>("card");
        QTest::addColumn<QStringList>("named");
        const QString name = u"Мария Петрова"_s;
        QTest::newRow("no price") << QVariant() << true << QStringList{Maria, name, u"000007"_s, u"няма цена"_s};
        QTest::newRow("price too large") << QVariant(40000.0) << true
                                         << QStringList{Maria, name, u"000007"_s, u"40000"_s};
        QTest::newRow("negative price") << QVariant(-3.0) << true << QStringList{Maria, name, u"000007"_s};
        QTest::newRow("no card") << QVariant(5.0) << false << QStringList{Maria, u"000004"_s, u"няма картон"_s};
    }
    void refusals()
    {
        QFETCH(QVariant, cena);
        QFETCH(bool, card);
        QFETCH(QStringList, named);
        TestPractice practice;
        addUnit();
        if (card)
            addCard(Maria, u"Мария Петрова"_s, u"1980-05-07"_s);
        addLine(Maria, u"2026-03-02"_s, u"101"_s, 5.0, u"000004"_s);
        addLine(Maria, u"2026-03-03"_s, u"301"_s, cena, u"000007"_s);
        run().ExportUin.clear();
        const auto report = BuildStomatologyXml(store::clinicDb(), march(), Doctor, Today);
        QVERIFY(!report.ok());
        for (const QString &part : named)
            QVERIFY2(report.error().contains(part), qPrintable(report.error()));
        QVERIFY(practice.dialogs().messages.isEmpty());
        QVERIFY(run().ExportUin.isEmpty());
    }

    void suggestedName()
    {
        const Period period = CheckPeriod(u"01.03.2026"_s, u"31.12.2026"_s).period;
        QCOMPARE(SuggestedXmlFileName(u"2200000001"_s, period), u"2200000001-032026.xml"_s);
    }

    void writeKeepsAnEarlierFile_data()
    {
        QTest::addColumn<QString>("target"); // in a fresh folder that holds old.xml, locked/old.xml, old-folder/
        QTest::addColumn<bool>("written");
        QTest::addColumn<QStringList>("files"); // the files of the folder afterwards: no temporary is left
        QTest::addColumn<bool>("diskFull");
        const QString old = u"old.xml"_s;
        QTest::newRow("new file") << u"report.xml"_s << true << QStringList{old, u"report.xml"_s} << false;
        QTest::newRow("over an earlier file") << old << true << QStringList{old} << false;
        QTest::newRow("disk full half-way") << old << false << QStringList{old} << true;
        QTest::newRow("read-only folder") << u"locked/old.xml"_s << false << QStringList{old} << false;
        QTest::newRow("missing folder") << u"missing/report.xml"_s << false << QStringList{old} << false;
        QTest::newRow("a folder of that name") << u"old-folder"_s << false << QStringList{old} << false;
    }
    void writeKeepsAnEarlierFile()
    {
        QFETCH(QString, target);
        QFETCH(bool, written);
        QFETCH(QStringList, files);
        QFETCH(bool, diskFull);
        if (target.startsWith(u"locked"_s) && ::geteuid() == 0)
            QSKIP("the superuser writes into a read-only folder");
        QTemporaryDir dir;
        QDir(dir.path()).mkpath(u"locked"_s);
        QDir(dir.path()).mkpath(u"old-folder"_s);
        for (const QString &old : {u"old.xml"_s, u"locked/old.xml"_s}) {
            QFile file(dir.filePath(old));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("earlier");
        }
        QFile::setPermissions(dir.filePath(u"locked"_s), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
        const QString path = dir.filePath(target);
        const QByteArray document = "\xEF\xBB\xBF<report>\r\n" + QByteArray(100000, ' ') + "</report>\r\n";
        std::optional<FileSizeLimit> limit;
        if (diskFull)
            limit.emplace(4096);
        const Outcome outcome = WriteXmlReport(document, path);
        limit.reset();
        QCOMPARE(outcome.ok(), written);
        if (!written)
            QVERIFY2(outcome.error().contains(path), qPrintable(outcome.error()));
        QFile file(written ? path : dir.filePath(u"old.xml"_s));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), written ? document : QByteArray("earlier"));
        QFile locked(dir.filePath(u"locked/old.xml"_s));
        QVERIFY(locked.open(QIODevice::ReadOnly));
        QCOMPARE(locked.readAll(), QByteArray("earlier"));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files, QDir::Name), files);
        QCOMPARE(QDir(dir.filePath(u"locked"_s)).entryList(QDir::Files), QStringList{u"old.xml"_s});
        QFile::setPermissions(dir.filePath(u"locked"_s),
                              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    }
};

QTEST_GUILESS_MAIN(TestStomatologyXml)
#include "tst_StomatologyXml.moc"
