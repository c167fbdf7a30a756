#include "shell/cli/PrintCommand.h"

#include "base/PrintOutput.h"
#include "diary/DiaryPrint.h"
#include "diary/DiaryPrintPage.h"
#include "patients/DateLists.h"
#include "patients/DateListsPage.h"
#include "patients/PatientRecord.h"
#include "patients/PatientRecordPage.h"
#include "store/Dates.h"
#include "store/Sql.h"
#include "treatment/TreatmentData.h"
#include "treatment/TreatmentDataPage.h"

#include <QDate>

// The forms that only read: the patient's record, the treatment data, a diary page, a date list.

namespace {

const QCommandLineOption egnOption{QStringLiteral("egn"), QStringLiteral("The patient's personal number."),
                                   QStringLiteral("EGN")};

// Writes the page, or says why not; `what` names the form in the line that reports it.
int writePage(const PrintCommand::Run &run, const QString &form, const QString &what,
              const Result<print::PageDescription> &page)
{
    if (!page) {
        run.err << "print " << form << ": " << page.error() << Qt::endl;
        return 1;
    }
    if (const Outcome written = print::writeFormPdf(page.value(), run.pdf); !written) {
        run.err << "print " << form << ": " << written.error() << Qt::endl;
        return 1;
    }
    run.out << what << " -> " << run.pdf << Qt::endl;
    return 0;
}

template <typename Loaded, typename Layout>
Result<print::PageDescription> laidOut(const Result<Loaded> &loaded, Layout layout)
{
    if (!loaded)
        return Result<print::PageDescription>::failure(loaded.error());
    return Result<print::PageDescription>::success(layout(loaded.value()));
}

Result<print::PageDescription> diaryPage(const PrintCommand::Run &run)
{
    const auto day = dates::fromTyped(run.value(QStringLiteral("date")));
    if (!day)
        return Result<print::PageDescription>::failure(
            QStringLiteral("\"%1\" не е дата във вида ДД.ММ.ГГГГ.").arg(run.value(QStringLiteral("date"))));
    const QString code = run.value(QStringLiteral("doctor")).trimmed();
    const auto name = diaryprint::DoctorName(store::clinicDb(), code);
    if (!name)
        return Result<print::PageDescription>::failure(name.error());
    const diaryprint::PrintDay printDay = diaryprint::ResolvePrintDay(DateChoice{true, *day}, *day);
    return laidOut(diaryprint::LoadDiaryPrint(store::clinicDb(), code, name.value(), printDay), diaryprint::DiaryPage);
}

std::optional<datelists::ListKind> listKind(const QString &word)
{
    if (word == u"born")
        return datelists::ListKind::Born;
    if (word == u"registered")
        return datelists::ListKind::Registered;
    if (word == u"visited")
        return datelists::ListKind::Visited;
    return std::nullopt;
}

Result<print::PageDescription> listPage(const PrintCommand::Run &run)
{
    const QStringList words = run.parser.positionalArguments();
    const auto kind = listKind(words.value(0));
    if (words.size() != 1 || !kind)
        return Result<print::PageDescription>::failure(QStringLiteral("name one list: born, registered or visited"));
    const datelists::RowCheck checked =
        datelists::CheckDateRow(*kind, run.value(QStringLiteral("from")), run.value(QStringLiteral("to")));
    if (!checked.request) {
        QString message = checked.message.isEmpty() ? datelists::NoLimitsMessage() : checked.message;
        return Result<print::PageDescription>::failure(message.replace(QChar(13), u' '));
    }
    return laidOut(datelists::LoadDateList(store::clinicDb(), *checked.request), datelists::DateListPage);
}

} // namespace

namespace {

// A form of one patient, asked for by the personal number: loaded, laid out, written.
template <typename Load, typename Layout>
PrintCommand::Form patientForm(const QString &name, const QString &summary, const QString &caption, Load load,
                               Layout layout)
{
    PrintCommand::Form form;
    form.name = name;
    form.summary = summary;
    form.options = {egnOption};
    form.required = {QStringLiteral("egn")};
    form.print = [name, caption, load, layout](const PrintCommand::Run &run) {
        const QString egn = run.value(QStringLiteral("egn"));
        return writePage(run, name, caption + egn, laidOut(load(store::clinicDb(), egn), layout));
    };
    return form;
}

} // namespace

PrintCommand::Form recordPrintForm()
{
    return patientForm(QStringLiteral("record"), QStringLiteral("the patient's record (Стоматологичен картон)"),
                       QStringLiteral("Картон на "), patientrecord::LoadPatientRecord, patientrecord::RecordPage);
}

PrintCommand::Form dataPrintForm()
{
    return patientForm(QStringLiteral("data"), QStringLiteral("the treatment data of a patient (Печат данни)"),
                       QStringLiteral("Данни за лечение на "), treatmentdata::LoadTreatmentData,
                       treatmentdata::TreatmentDataPage);
}

PrintCommand::Form diaryPrintForm()
{
    PrintCommand::Form form;
    form.name = QStringLiteral("diary");
    form.summary = QStringLiteral("one day of a doctor's diary (График)");
    form.options = {{QStringLiteral("doctor"), QStringLiteral("The doctor's practice code."), QStringLiteral("KOD")},
                    {QStringLiteral("date"), QStringLiteral("The day."), QStringLiteral("DD.MM.YYYY")}};
    form.required = {QStringLiteral("doctor"), QStringLiteral("date")};
    form.print = [](const PrintCommand::Run &run) {
        return writePage(run, QStringLiteral("diary"), QStringLiteral("График за ") + run.value(QStringLiteral("date")),
                         diaryPage(run));
    };
    return form;
}

PrintCommand::Form listPrintForm()
{
    PrintCommand::Form form;
    form.name = QStringLiteral("list");
    form.summary = QStringLiteral("patients born, registered or visited in a period: list born|registered|visited");
    form.options = {{QStringLiteral("from"), QStringLiteral("The first day."), QStringLiteral("DD.MM.YYYY")},
                    {QStringLiteral("to"), QStringLiteral("The last day."), QStringLiteral("DD.MM.YYYY")}};
    form.required = {QStringLiteral("from"), QStringLiteral("to")};
    form.print = [](const PrintCommand::Run &run) {
        return writePage(run, QStringLiteral("list"), QStringLiteral("Списък"), listPage(run));
    };
    return form;
}
