#include "shell/cli/PrintCommand.h"

#include "base/PrintOutput.h"
#include "store/Sql.h"
#include "treatment/SheetPrint.h"

// velmorata print sheet --egn EGN [--keep-marks]: the ambulatory sheet of the patient's lines
// marked for the fund, taking the marks off as the treatment window's "Печат" does.
PrintCommand::Form sheetPrintForm()
{
    PrintCommand::Form form;
    form.name = QStringLiteral("sheet");
    form.summary = QStringLiteral("the ambulatory sheet (Амбулаторен лист) of a patient");
    form.options = {{QStringLiteral("egn"), QStringLiteral("The patient's personal number."), QStringLiteral("EGN")},
                    {QStringLiteral("keep-marks"), QStringLiteral("Leave the lines marked \"Печат за РЗОК\".")}};
    form.required = {QStringLiteral("egn")};
    form.print = [](const PrintCommand::Run &run) {
        const SheetMarks marks = run.isSet(QStringLiteral("keep-marks")) ? SheetMarks::Keep : SheetMarks::Change;
        const auto printed = PrintSheet(store::clinicDb(), run.value(QStringLiteral("egn")), marks,
                                        [&run](const print::PageDescription &sheet) {
                                            return print::writeFormPdf(sheet, run.pdf);
                                        });
        if (!printed) {
            run.err << "print sheet: " << printed.error() << Qt::endl;
            return 1;
        }
        for (int n = 0; n < printed->shortenedCodes; ++n)
            run.err << QString(LongCodeWarning).replace(QChar(13), u'\n') << Qt::endl;
        run.out << "Амбулаторен лист: " << printed->lines << " реда" << (printed->hasExam ? ", със зъбен статус" : "")
                << " -> " << run.pdf << Qt::endl;
        return 0;
    };
    return form;
}
