#include "base/ui/PrintPreview.h"

#include "base/Calendar.h"
#include "base/Dialogs.h"
#include "base/PrintOffsets.h"
#include "base/ui/PrintOffsetDialog.h"
#include "base/ui/PrintRenderer.h"

#include <QAction>
#include <QMainWindow>
#include <QFileDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QToolBar>

namespace print {

PrintPreview::PrintPreview(PageDescription form, QWidget *parent)
    : QPrintPreviewDialog(parent)
    , m_form(std::move(form))
{
    setObjectName(m_form.formName);
    setAttribute(Qt::WA_DeleteOnClose);
    printer()->setDocName(m_form.formName);
    connect(this, &QPrintPreviewDialog::paintRequested, this, &PrintPreview::paint);
    addActions();
}

PrintPreview *PrintPreview::showForm(const PageDescription &form, QWidget *parent)
{
    auto *preview = new PrintPreview(form, parent);
    preview->setWindowModality(Qt::NonModal);
    preview->show();
    return preview;
}

void PrintPreview::addActions()
{
    // The preview's own bar fills a 1366 px screen; ours stands on a row of its own below it,
    // where no action of it is pushed behind the bar's "»".
    auto *frame = findChild<QMainWindow *>();
    if (!frame)
        return;
    auto *bar = new QToolBar(frame);
    bar->setObjectName(QStringLiteral("tbForm"));
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    bar->setMovable(false);
    frame->addToolBarBreak();
    frame->addToolBar(bar);
    QAction *pdf = bar->addAction(QStringLiteral("PDF..."), this, &PrintPreview::saveAsPdf);
    pdf->setObjectName(QStringLiteral("actSavePdf"));
    pdf->setToolTip(QStringLiteral("Запис като PDF"));
    if (!hasOffset(m_form.formName))
        return;
    QAction *offset = bar->addAction(QStringLiteral("Отместване..."), this, &PrintPreview::askOffset);
    offset->setObjectName(QStringLiteral("actOffset"));
    QAction *dataOnly = bar->addAction(QStringLiteral("Само данните"));
    dataOnly->setObjectName(QStringLiteral("actDataOnly"));
    dataOnly->setToolTip(QStringLiteral("Печат върху бланката на РЗОК: без линиите на формуляра"));
    dataOnly->setCheckable(true);
    connect(dataOnly, &QAction::toggled, this, [this](bool on) {
        m_withRuling = !on;
        refresh();
    });
}

void PrintPreview::paint(QPrinter *target)
{
    const Outcome drawn = print::render(m_form, *target, {offsetOf(m_form.formName), m_withRuling});
    if (!drawn)
        dialogs().information(drawn.error());
}

void PrintPreview::saveAsPdf()
{
    QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Запис като PDF"), m_form.pdfFileName(calendar::today()),
                                                QStringLiteral("PDF (*.pdf)"));
    if (path.isEmpty())
        return;
    if (!path.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive))
        path += QStringLiteral(".pdf");
    const Outcome written = writePdf(m_form, path, {offsetOf(m_form.formName), m_withRuling});
    if (!written)
        dialogs().information(written.error());
}

void PrintPreview::askOffset()
{
    if (PrintOffsetDialog::edit(m_form.formName, this))
        refresh();
}

void PrintPreview::refresh()
{
    if (auto *pages = findChild<QPrintPreviewWidget *>())
        pages->updatePreview();
}

} // namespace print
