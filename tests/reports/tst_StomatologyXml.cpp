// The stomatology XML report: the document line for line, the values the fund's format shapes,
// escaping that keeps every document parseable, the refusals that make no document, and the
// write that never loses an earlier file.
#include "TestPractice.h"

#include "base/RunState.h"
#include "maintenance/DemoPractice.h"
#include "reports/Period.h"
#include "reports/PeriodLines.h"
#include "reports/StomatologyXml.h"
#include "reports/XmlValues.h"
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

namespace {

const QString Doctor = QStringLiteral("D1");
const QDate Today(2026, 4, 3);
const QString Maria = validEgn(QDate(1980, 5, 7), false);
const QString Georgi = validEgn(QDate(1975, 11, 30));

Period march() { return CheckPeriod(QStringLiteral("01.03.2026"), QStringLiteral("31.03.2026")).period; }

void insert(const QString &table, const QVariantMap &values)
{
    QStringList marks;
    for (int i = 0; i < values.size(); ++i)
        marks << QStringLiteral("?");
    QSqlQuery query(store::clinicDb());
    QVERIFY(query.prepare(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                              .arg(table, values.keys().join(u','), marks.join(u','))));
    for (const QVariant &value : values)
        query.addBindValue(value);
    QVERIFY2(query.exec(), qPrintable(query.lastError().text()));
}

void addLine(const QString &egn, const QString &date, const QString &kod, const QVariant &cena,
             const QString &listId, const QVariantMap &more = {}, const QString &doctor = Doctor)
{
    QVariantMap row{{QStringLiteral("EGN"), egn},      {QStringLiteral("Data"), date},
                    {QStringLiteral("KodHelp"), kod},  {QStringLiteral("Cena"), cena},
                    {QStringLiteral("ListID"), listId}, {QStringLiteral("KodMedic"), doctor}};
    row.insert(more);
    insert(QStringLiteral("Help"), row);
}

void addCard(const QString &egn, const QString &names, const QString &born, const QVariantMap &more = {})
{
    QVariantMap row{{QStringLiteral("EGN"), egn}, {QStringLiteral("Names"), names}, {QStringLiteral("DataB"), born}};
    row.insert(more);
    insert(QStringLiteral("Pacients"), row);
}

void addUnit()
{
    insert(QStringLiteral("MedicUnit"),
           {{QStringLiteral("UserName"), QStringLiteral(" ДЗ „Усмивка“ ООД ")},
            {QStringLiteral("UserBULSTAT"), QStringLiteral("123456789")},
            {QStringLiteral("UserID"), QStringLiteral("2201234567")},
            {QStringLiteral("UserContract"), QStringLiteral("22/123")},
            {QStringLiteral("UserUIN"), QStringLiteral(" 2200000001 ")}});
}

// Maria: a chart, two lines, referrals of every kind (and a Path row of another sheet of
// hers). Georgi: two words of name, no chart, a line of price 0, no referral.
void addReferralsAndCharts()
{
    insert(QStringLiteral("Dental"), {{QStringLiteral("EGN"), Maria}, {QStringLiteral("Z1"), QStringLiteral("K")},
                                      {QStringLiteral("Z3"), QStringLiteral("*")},
                                      {QStringLiteral("Z21"), QStringLiteral("E")},
                                      {QStringLiteral("Z22"), QStringLiteral(" ")},
                                      {QStringLiteral("Z23"), QStringLiteral("*")},
                                      {QStringLiteral("Z52"), QStringLiteral("C ")}});
    const auto referral = [](const QString &table, const QString &listId, const QString &date, QVariantMap more) {
        more.insert({{QStringLiteral("EGN"), Maria}, {QStringLiteral("ListID"), listId}, {QStringLiteral("Data"), date}});
        insert(table, more);
    };
    referral(QStringLiteral("Path"), QStringLiteral("000009"), QStringLiteral("2026-03-01"),
             {{QStringLiteral("Nomer"), QStringLiteral("76")}});
    referral(QStringLiteral("Path"), QStringLiteral("000001"), QStringLiteral("2026-03-05"),
             {{QStringLiteral("Nomer"), QStringLiteral(" 77")}, {QStringLiteral("SIMP"), QStringLiteral("2201")},
              {QStringLiteral("BCD"), QStringLiteral("B12")}});
    referral(QStringLiteral("Path"), QStringLiteral("000001"), QStringLiteral("2026-03-06"),
             {{QStringLiteral("Nomer"), QStringLiteral("78")}});
    referral(QStringLiteral("Invest"), QStringLiteral("000001"), QStringLiteral("2026-03-06"),
             {{QStringLiteral("Nomer"), QStringLiteral("88")}, {QStringLiteral("Kod1"), QStringLiteral("1012")},
              {QStringLiteral("Kod2"), QStringLiteral(" 10")}});
    referral(QStringLiteral("Spec"), QStringLiteral("000001"), QStringLiteral("2026-03-05"),
             {{QStringLiteral("SISP1"), QStringLiteral("61")}, {QStringLiteral("SISP2"), QStringLiteral("62")}});
    referral(QStringLiteral("Spec"), QStringLiteral("000001"), QStringLiteral("2026-03-12"),
             {{QStringLiteral("SISP1"), QStringLiteral("64")}, {QStringLiteral("SISP2"), QStringLiteral(" ")}});
}

void addTwoPatients()
{
    addUnit();
    addCard(Maria, QStringLiteral("Мария Иванова Петрова"), QStringLiteral("1980-05-07"),
            {{QStringLiteral("Type"), QStringLiteral("1")}, {QStringLiteral("Country"), QStringLiteral("BG")},
             {QStringLiteral("RZOK"), QStringLiteral("22")}, {QStringLiteral("ZR"), QStringLiteral("01")},
             {QStringLiteral("ZBook"), QStringLiteral("12345")}, {QStringLiteral("Nep"), QStringLiteral("пеницилин")},
             {QStringLiteral("ZabNaw"), QStringLiteral("диабет")}});
    addCard(Georgi, QStringLiteral("Георги Стоянов"), QStringLiteral("1975-11-30"));
    addReferralsAndCharts();
    addLine(Georgi, QStringLiteral("2026-03-10"), QStringLiteral("101"), 0.0, QStringLiteral("000002"));
    addLine(Maria, QStringLiteral("2026-03-05"), QStringLiteral("301"), 17.99, QStringLiteral("000001"),
            {{QStringLiteral("Help"), QStringLiteral("Кариес")}, {QStringLiteral("KodZab"), QStringLiteral("16")},
             {QStringLiteral("Times"), 26}});
    addLine(Maria, QStringLiteral("2026-03-02"), QStringLiteral("101"), 12.05, QStringLiteral("000001"),
            {{QStringLiteral("Help"), QStringLiteral(" Преглед ")}, {QStringLiteral("Times"), 15}});
    // Another doctor's line and one of the doctor's outside the period stay out.
    addLine(Maria, QStringLiteral("2026-03-05"), QStringLiteral("508"), 30.0, QStringLiteral("000001"), {},
            QStringLiteral("D2"));
    addLine(Maria, QStringLiteral("2026-04-01"), QStringLiteral("509"), 30.0, QStringLiteral("000003"));
}

QString tooth(int code, const QString &status)
{
    return QStringLiteral("<tooth toothCode=\"%1\">\n<toothStatuses>\n<toothStatus toothStatusCode=\"%2\"/>\n"
                          "</toothStatuses>\n</tooth>\n")
        .arg(code)
        .arg(status);
}

QString diseases(const QString &allergy, const QString &past, const QString &current)
{
    return QStringLiteral("<allergies>\n<allergy allergyName=\"%1\"/>\n</allergies>\n<pastDiseases>\n"
                          "<pastDisease name=\"%2\"/>\n</pastDiseases>\n<currentDiseases>\n"
                          "<currentDisease name=\"%3\"/>\n</currentDiseases>\n")
        .arg(allergy, past, current);
}

QString expectedDocument()
{
    const QString host = QStringLiteral("http://") + QSysInfo::machineHostName();
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                          "<report medicalUnit=\"ДЗ „Усмивка“ ООД\" bulstat=\"123456789\" RHCCode=\"2201234567\" "
                          "contractNo=\"22/123\" odpCode=\"00\" physPersonalProfCode=\"2200000001\" insuranceHouse=\"22\" "
                          "reportingDate=\"2026-4-3\" startFrom=\"2026-03-01\" endTo=\"2026-03-31\" stomType=\"0\" "
                          "xsi:schemaLocation=\"%1 ImportStomatologyReport.xsd\" xmlns=\"%1\" "
                          "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">\n<dentalCareServices>\n")
               .arg(host)
        + QStringLiteral("<dentalCareService personType=\"1\" personIdentifier=\"%1\" countryCode=\"BG\" RHIFCode=\"22\" "
                         "healthRegionCode=\"01\" birthDate=\"1980-05-07\" personFirstName=\"Мария\" "
                         "personMiddleName=\"Иванова\" personLastName=\"Петрова\" specificationType=\"\" "
                         "ambulatorySheetNo=\"000001\" HIRBNo=\"12345\" unfavorableCondition=\"0\">\n")
              .arg(Maria)
        + diseases(QStringLiteral("пеницилин"), {}, QStringLiteral("диабет")) + QStringLiteral("<teeth>\n")
        + tooth(55, QStringLiteral("K")) + tooth(18, QStringLiteral("E")) + tooth(16, QStringLiteral("*"))
        + tooth(38, QStringLiteral("C ")) + QStringLiteral("</teeth>\n<services>\n")
        + QStringLiteral("<service date=\"2026-03-02\" diagnosis=\"Преглед\" toothCode=\"\" activityCode=\"101\" "
                         "repPrice=\"12.5\" numberOfMinutes=\"15\"/>\n"
                         "<service date=\"2026-03-05\" diagnosis=\"Кариес\" toothCode=\"16\" activityCode=\"301\" "
                         "repPrice=\"17.99\" numberOfMinutes=\"26\"/>\n</services>\n"
                         "<prescMedicalPathways>\n"
                         "<prescMedicalPathway pathwayNo=\"77\" date=\"2026-3-5\" ODPCode=\"2201\" HSACode=\"B12\"/>\n"
                         "</prescMedicalPathways>\n<prescMDAs>\n<prescMDA pathwayNo=\"88\" date=\"2026-3-6\">\n"
                         "<codes>\n<code name=\"10.12\"/>\n<code name=\"10.\"/>\n</codes>\n</prescMDA>\n</prescMDAs>\n"
                         "<prescSpecialists>\n<prescSpecialist SODPCode=\"61\" SODPCodeSecond=\"62\" date=\"2026-3-5\"/>\n"
                         "<prescSpecialist SODPCode=\"64\" date=\"2026-3-12\"/>\n</prescSpecialists>\n"
                         "</dentalCareService>\n")
        + QStringLiteral("<dentalCareService personType=\"\" personIdentifier=\"%1\" countryCode=\"\" RHIFCode=\"\" "
                         "healthRegionCode=\"\" birthDate=\"1975-11-30\" personFirstName=\"Георги\" "
                         "personMiddleName=\"\" personLastName=\"Стоянов\" specificationType=\"\" "
                         "ambulatorySheetNo=\"000002\" HIRBNo=\"\" unfavorableCondition=\"0\">\n")
              .arg(Georgi)
        + diseases({}, {}, {})
        + QStringLiteral("<teeth>\n</teeth>\n<services>\n"
                         "<service date=\"2026-03-10\" diagnosis=\"\" toothCode=\"\" activityCode=\"101\" "
                         "repPrice=\"0.0\" numberOfMinutes=\"\"/>\n</services>\n"
                         "<prescMedicalPathways>\n<prescMedicalPathway pathwayNo=\"\" date=\"\" ODPCode=\"\" HSACode=\"\"/>\n"
                         "</prescMedicalPathways>\n<prescMDAs>\n"
                         "<prescMDA pathwayNo=\"\" date=\"\" ODPCode=\"\" HSACode=\"\">\n<codes>\n<code name=\"\"/>\n"
                         "</codes>\n</prescMDA>\n</prescMDAs>\n<prescSpecialists>\n"
                         "<prescSpecialist SODPCode=\"\" date=\"\"/>\n</prescSpecialists>\n</dentalCareService>\n"
                         "</dentalCareServices>\n</report>\n");
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
        QVERIFY(text.endsWith(QStringLiteral("</report>\r\n")));
        QCOMPARE(text.split(QStringLiteral("\r\n")), expectedDocument().split(u'\n'));
        QCOMPARE(report.sheets, 2);
        QCOMPARE(report.exportUin, QStringLiteral("2200000001"));
        QCOMPARE(run().ExportUin, QStringLiteral("2200000001"));
        QCOMPARE(practice.dialogs().messages, QStringList{DoneMessage});
        QCOMPARE(practice.dialogs().progressShown, 1);
        QString error;
        QCOMPARE(parsed(report.document, QStringLiteral("dentalCareService"), &error).size(), 2);
        QVERIFY2(error.isEmpty(), qPrintable(error));
    }

    void emptyPeriodWithoutUnit()
    {
        TestPractice practice;
        run().ExportUin = QStringLiteral("earlier");
        const XmlReport report = built();
        const QString host = QStringLiteral("http://") + QSysInfo::machineHostName();
        QCOMPARE(QString::fromUtf8(report.document.mid(3)).split(QStringLiteral("\r\n")),
                 (QStringList{QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"),
                              QStringLiteral("<report medicalUnit=\"\" bulstat=\"\" RHCCode=\"\" contractNo=\"\" "
                                             "odpCode=\"\" physPersonalProfCode=\"\" insuranceHouse=\"\" "
                                             "reportingDate=\"2026-4-3\" startFrom=\"2026-03-01\" endTo=\"2026-03-31\" "
                                             "stomType=\"0\" xsi:schemaLocation=\"%1 ImportStomatologyReport.xsd\" "
                                             "xmlns=\"%1\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">")
                                  .arg(host),
                              QStringLiteral("<dentalCareServices>"), QStringLiteral("</dentalCareServices>"),
                              QStringLiteral("</report>"), QString()}));
        QCOMPARE(report.sheets, 0);
        QCOMPARE(report.exportUin, QStringLiteral("earlier"));
        QCOMPARE(practice.dialogs().messages, QStringList{DoneMessage});
        QString error;
        parsed(report.document, QStringLiteral("report"), &error);
        QVERIFY2(error.isEmpty(), qPrintable(error));
    }

    // Every sheet of a patient carries all his lines of the period; sheets go by number, and
    // a number two patients share (two years of one doctor) keeps the order of their first lines.
    void patientServicesUnderEachSheet()
    {
        TestPractice practice;
        addCard(Maria, QStringLiteral("Мария"), QStringLiteral("1980-05-07"));
        addCard(Georgi, QStringLiteral("Георги"), QStringLiteral("1975-11-30"));
        addLine(Georgi, QStringLiteral("2026-03-20"), QStringLiteral("101"), 10.0, QStringLiteral("000001"));
        addLine(Maria, QStringLiteral("2026-03-09"), QStringLiteral("301"), 10.0, QStringLiteral("000005"));
        addLine(Maria, QStringLiteral("2026-03-02"), QStringLiteral("101"), 10.0, QStringLiteral("000001"));
        addLine(Maria, QStringLiteral("2026-03-03"), QStringLiteral("101"), 10.0, QStringLiteral("000001"));
        const XmlReport report = built();
        QString error;
        QStringList sheets;
        for (const auto &attributes : parsed(report.document, QStringLiteral("dentalCareService"), &error))
            sheets << attr(attributes, "personIdentifier") + u' '
                    + attr(attributes, "ambulatorySheetNo");
        QCOMPARE(sheets, (QStringList{Georgi + QStringLiteral(" 000001"), Maria + QStringLiteral(" 000001"),
                                      Maria + QStringLiteral(" 000005")}));
        QStringList services;
        for (const auto &attributes : parsed(report.document, QStringLiteral("service"), &error))
            services << attr(attributes, "date") + u' ' + attr(attributes, "activityCode");
        const QStringList marias{QStringLiteral("2026-03-02 101"), QStringLiteral("2026-03-03 101"),
                                 QStringLiteral("2026-03-09 301")};
        QCOMPARE(services, QStringList{QStringLiteral("2026-03-20 101")} + marias + marias);
        QVERIFY2(error.isEmpty(), qPrintable(error));
    }

    // A month of the demo practice, with its invented names, charts and referrals: the document
    // parses, and holds every sheet of the doctor with all of its patient's lines.
    void demoMonthParses()
    {
        QTemporaryDir folder;
        const auto made = generateDemoPractice({folder.path(), 2, 300, 1, 5, QDate(2026, 3, 20)});
        QVERIFY2(made.ok(), qPrintable(made.error()));
        const QString doctor = made->doctors.at(0).code;
        const QString lines = QStringLiteral(" FROM Help WHERE Data BETWEEN '2026-02-01' AND '2026-02-28' AND KodMedic = ?");
        const int sheets = store::scalar(store::clinicDb(),
                                         QStringLiteral("SELECT COUNT(*) FROM (SELECT DISTINCT EGN, ListID%1) s").arg(lines),
                                         {doctor}).toInt();
        const int services =
            store::scalar(store::clinicDb(),
                          QStringLiteral("SELECT COUNT(*) FROM (SELECT DISTINCT EGN, ListID%1) s JOIN (SELECT EGN%1) h "
                                         "ON h.EGN = s.EGN").arg(lines),
                          {doctor, doctor}).toInt();
        QVERIFY(sheets > 10);
        const Period february = CheckPeriod(QStringLiteral("01.02.2026"), QStringLiteral("28.02.2026")).period;
        const auto report = BuildStomatologyXml(store::clinicDb(), february, doctor, Today);
        store::closeStore();
        QVERIFY2(report.ok(), qPrintable(report.error()));
        QString error;
        QCOMPARE(parsed(report->document, QStringLiteral("dentalCareService"), &error).size(), sheets);
        QCOMPARE(parsed(report->document, QStringLiteral("service"), &error).size(), services);
        QVERIFY2(error.isEmpty(), qPrintable(error));
    }

    void valuesComeBackFromTheParser_data()
    {
        QTest::addColumn<QString>("names");
        QTest::addColumn<QString>("diagnosis");
        QTest::newRow("ampersand, less-than, quotes") << QStringLiteral("Д&Г <Ко> \"Петров\"")
                                                      << QStringLiteral("a < b & c > d");
        QTest::newRow("apostrophe") << QStringLiteral("Д'Арк Мария О'Нийл") << QStringLiteral("it's");
        QTest::newRow("tab, line breaks") << QStringLiteral("Иван\tИванов Петров")
                                          << QStringLiteral("ред 1\r\nред 2\tкрай");
        QTest::newRow("entity-like text") << QStringLiteral("&amp; &#10; ]]>") << QStringLiteral("&lt;");
    }
    void valuesComeBackFromTheParser()
    {
        QFETCH(QString, names);
        QFETCH(QString, diagnosis);
        TestPractice practice;
        addCard(Maria, names, QStringLiteral("1980-05-07"), {{QStringLiteral("Nep"), diagnosis}});
        addLine(Maria, QStringLiteral("2026-03-02"), QStringLiteral("101"), 1.0, QStringLiteral("000001"),
                {{QStringLiteral("Help"), diagnosis}});
        const XmlReport report = built();
        QString error;
        const auto patients = parsed(report.document, QStringLiteral("dentalCareService"), &error);
        const auto services = parsed(report.document, QStringLiteral("service"), &error);
        const auto allergies = parsed(report.document, QStringLiteral("allergy"), &error);
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
        QTest::newRow("three words") << QStringLiteral("Иван Петров Иванов")
                                     << QStringList{QStringLiteral("Иван"), QStringLiteral("Петров"), QStringLiteral("Иванов")};
        QTest::newRow("two words") << QStringLiteral("Иван Петров")
                                   << QStringList{QStringLiteral("Иван"), QString(), QStringLiteral("Петров")};
        QTest::newRow("one word") << QStringLiteral("Иван") << QStringList{QString(), QString(), QStringLiteral("Иван")};
        QTest::newRow("four words") << QStringLiteral("Анна Мария Петрова Иванова")
                                    << QStringList{QStringLiteral("Анна"), QStringLiteral("Мария"),
                                                   QStringLiteral("Петрова Иванова")};
        QTest::newRow("two blanks between") << QStringLiteral("Иван  Петров Иванов")
                                            << QStringList{QStringLiteral("Иван"), QStringLiteral("Петров"),
                                                           QStringLiteral("Иванов")};
        QTest::newRow("leading blank") << QStringLiteral(" Иван Петров")
                                       << QStringList{QString(), QStringLiteral("Иван"), QStringLiteral("Петров")};
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
        QTest::newRow("zero") << 0.0 << QStringLiteral("0.0");
        QTest::newRow("odd cents unpadded") << 12.05 << QStringLiteral("12.5");
        QTest::newRow("binary 17.99") << 17.99 << QStringLiteral("17.99");
        QTest::newRow("binary 0.29") << 0.29 << QStringLiteral("0.29");
        QTest::newRow("half lev") << 12.5 << QStringLiteral("12.50");
        QTest::newRow("whole") << 21.0 << QStringLiteral("21.0");
        QTest::newRow("largest") << 32767.99 << QStringLiteral("32767.99");
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
        const QString name = QStringLiteral("Мария Петрова");
        QTest::newRow("no price") << QVariant() << true << QStringList{Maria, name, QStringLiteral("000007"), QStringLiteral("няма цена")};
        QTest::newRow("price too large") << QVariant(40000.0) << true
                                         << QStringList{Maria, name, QStringLiteral("000007"), QStringLiteral("40000")};
        QTest::newRow("negative price") << QVariant(-3.0) << true << QStringList{Maria, name, QStringLiteral("000007")};
        QTest::newRow("no card") << QVariant(5.0) << false
                                 << QStringList{Maria, QStringLiteral("000004"), QStringLiteral("няма картон")};
    }
    void refusals()
    {
        QFETCH(QVariant, cena);
        QFETCH(bool, card);
        QFETCH(QStringList, named);
        TestPractice practice;
        addUnit();
        if (card)
            addCard(Maria, QStringLiteral("Мария Петрова"), QStringLiteral("1980-05-07"));
        addLine(Maria, QStringLiteral("2026-03-02"), QStringLiteral("101"), 5.0, QStringLiteral("000004"));
        addLine(Maria, QStringLiteral("2026-03-03"), QStringLiteral("301"), cena, QStringLiteral("000007"));
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
        const Period period = CheckPeriod(QStringLiteral("01.03.2026"), QStringLiteral("31.12.2026")).period;
        QCOMPARE(SuggestedXmlFileName(QStringLiteral("2200000001"), period), QStringLiteral("2200000001-032026.xml"));
    }

    void writeKeepsAnEarlierFile_data()
    {
        QTest::addColumn<QString>("target"); // in a fresh folder that holds old.xml, locked/old.xml, old-folder/
        QTest::addColumn<bool>("written");
        QTest::addColumn<QStringList>("files"); // the files of the folder afterwards: no temporary is left
        QTest::addColumn<bool>("diskFull");
        const QString old = QStringLiteral("old.xml");
        QTest::newRow("new file") << QStringLiteral("report.xml") << true << QStringList{old, QStringLiteral("report.xml")}
                                  << false;
        QTest::newRow("over an earlier file") << old << true << QStringList{old} << false;
        QTest::newRow("disk full half-way") << old << false << QStringList{old} << true;
        QTest::newRow("read-only folder") << QStringLiteral("locked/old.xml") << false << QStringList{old} << false;
        QTest::newRow("missing folder") << QStringLiteral("missing/report.xml") << false << QStringList{old} << false;
        QTest::newRow("a folder of that name") << QStringLiteral("old-folder") << false << QStringList{old} << false;
    }
    void writeKeepsAnEarlierFile()
    {
        QFETCH(QString, target);
        QFETCH(bool, written);
        QFETCH(QStringList, files);
        QFETCH(bool, diskFull);
        if (target.startsWith(QStringLiteral("locked")) && ::geteuid() == 0)
            QSKIP("the superuser writes into a read-only folder");
        QTemporaryDir dir;
        QDir(dir.path()).mkpath(QStringLiteral("locked"));
        QDir(dir.path()).mkpath(QStringLiteral("old-folder"));
        for (const QString &old : {QStringLiteral("old.xml"), QStringLiteral("locked/old.xml")}) {
            QFile file(dir.filePath(old));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("earlier");
        }
        QFile::setPermissions(dir.filePath(QStringLiteral("locked")), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
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
        QFile file(written ? path : dir.filePath(QStringLiteral("old.xml")));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), written ? document : QByteArray("earlier"));
        QFile locked(dir.filePath(QStringLiteral("locked/old.xml")));
        QVERIFY(locked.open(QIODevice::ReadOnly));
        QCOMPARE(locked.readAll(), QByteArray("earlier"));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files, QDir::Name), files);
        QCOMPARE(QDir(dir.filePath(QStringLiteral("locked"))).entryList(QDir::Files), QStringList{QStringLiteral("old.xml")});
        QFile::setPermissions(dir.filePath(QStringLiteral("locked")), QFileDevice::ReadOwner | QFileDevice::WriteOwner
                                                                          | QFileDevice::ExeOwner);
    }
};

QTEST_GUILESS_MAIN(TestStomatologyXml)
#include "tst_StomatologyXml.moc"
