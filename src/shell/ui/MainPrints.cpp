// The prints the main window's inquiry menu opens.
#include "shell/ui/frmMain.h"

#include "base/Calendar.h"
#include "base/Dialogs.h"
#include "base/RunState.h"
#include "base/ui/PrintPreview.h"
#include "diary/DiaryPrint.h"
#include "diary/DiaryPrintPage.h"
#include "patients/PatientRecord.h"
#include "patients/PatientRecordPage.h"
#include "store/Sql.h"

// The search of an inquiry stays open behind the record, so that the next patient is a click away.
void frmMain::printRecord(const QString &egn)
{
    const auto record = patientrecord::LoadPatientRecord(store::clinicDb(), egn);
    if (!record) {
        dialogs().information(record.error());
        return;
    }
    print::PrintPreview::showForm(patientrecord::RecordPage(record.value()), this);
}

// The signed-in doctor's page of the day the date dialog gives; a cancelled dialog prints tomorrow.
void frmMain::printDiaryPage()
{
    const diaryprint::PrintDay day = diaryprint::ResolvePrintDay(dialogs().chooseDate(), calendar::today());
    const auto diary = diaryprint::LoadDiaryPrint(store::clinicDb(), run().CurrentMedicCode, run().CurrentMedicName, day);
    if (!diary) {
        dialogs().information(diary.error());
        return;
    }
    print::PrintPreview::showForm(diaryprint::DiaryPage(diary.value()), this);
}
