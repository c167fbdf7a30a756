#pragma once

#include "base/Page.h"

#include <QPrintPreviewDialog>

class QPrinter;

namespace print {

// Every printed form opens here: the pages as they will come out, with print, "save as PDF",
// and, for a form that goes onto the fund's pre-printed paper, its offset and the choice to
// print the data alone onto the paper in the printer. Not modal; it deletes itself on close.
class PrintPreview final : public QPrintPreviewDialog
{
    Q_OBJECT

public:
    PrintPreview(PageDescription form, QWidget *parent = nullptr);

    static PrintPreview *showForm(const PageDescription &form, QWidget *parent = nullptr);

private:
    void paint(QPrinter *printer);
    void saveAsPdf();
    void askOffset();
    void addActions();
    void refresh();

    PageDescription m_form;
    bool m_withRuling = true;
};

} // namespace print
