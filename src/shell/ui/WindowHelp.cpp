#include "shell/ui/WindowHelp.h"

#include <QHash>
#include <QKeyEvent>
#include <QMenu>
#include <QWidget>

namespace {

// The help page of each form, by the form's name.
const QHash<QString, int> &pagesOfForms()
{
    static const QHash<QString, int> pages{
        {QStringLiteral("DenHelp"), 6},          {QStringLiteral("KartonAdd"), 8},
        {QStringLiteral("Cenoraz"), 12},         {QStringLiteral("Grafic"), 13},
        {QStringLiteral("TimeDay"), 16},         {QStringLiteral("HelpWindow"), 17},
        {QStringLiteral("SeekName"), 50},
        {QStringLiteral("KorEGN"), 51},          {QStringLiteral("SeekDate"), 53},
        {QStringLiteral("ClaimsCheck"), 58},     {QStringLiteral("MedicUnit"), 59},
        {QStringLiteral("ChangePassword"), 61},  {QStringLiteral("Schet"), 63},
        {QStringLiteral("PrintOffsetDialog"), 64}, {QStringLiteral("EgnRuleForm"), 65},
        {QStringLiteral("ViewHelp"), 66},
        {QStringLiteral("PathWay"), 67},         {QStringLiteral("MedicAdd"), 68},
        {QStringLiteral("Password"), 69},
    };
    return pages;
}

} // namespace

WindowHelp::WindowHelp(std::function<void(int)> showPage, QObject *parent)
    : QObject(parent)
    , m_showPage(std::move(showPage))
{
}

int WindowHelp::contextOf(const QWidget *window)
{
    const auto owner = [](const QWidget *w) { return w->parentWidget() ? w->parentWidget()->window() : nullptr; };
    for (const QWidget *w = window ? window->window() : nullptr; w; w = owner(w)) {
        if (w->objectName() == u"frmMain")
            return 0;
        // A preview carries its form's name; all previews share one page.
        if (w->inherits("QPrintPreviewDialog"))
            return 64;
        if (const int page = pagesOfForms().value(w->objectName()); page > 0)
            return page;
    }
    return 0;
}

bool WindowHelp::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent *>(event)->key() != Qt::Key_F1)
        return false;
    auto *widget = qobject_cast<QWidget *>(watched);
    // The main window and its menus answer F1 themselves.
    if (!widget || qobject_cast<QMenu *>(widget) || widget->window()->objectName() == u"frmMain")
        return false;
    const int context = contextOf(widget->window());
    m_showPage(context > 0 ? context : m_workContext);
    return true;
}
