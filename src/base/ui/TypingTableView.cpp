#include "base/ui/TypingTableView.h"

#include "base/Dialogs.h"
#include "base/UnsavedTyping.h"

#include <QMetaProperty>

TypingTableView::TypingTableView(QWidget *parent)
    : QTableView(parent)
{
}

void TypingTableView::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    // The delegate ends an edit with RevertModelCache only for Escape.
    if (hint == QAbstractItemDelegate::RevertModelCache && editorHoldsTyping(editor)
        && !dialogs().question(dropTypingQuestion(QStringLiteral("Има въведен и незаписан текст в клетката.")))) {
        editor->setFocus();
        return;
    }
    QTableView::closeEditor(editor, hint);
}

bool TypingTableView::editorHoldsTyping(const QWidget *editor) const
{
    const QMetaProperty typed = editor->metaObject()->userProperty();
    if (!typed.isValid())
        return false;
    const QString text = typed.read(editor).toString();
    const QString stored = currentIndex().data(Qt::EditRole).toString();
    return text != stored && !text.trimmed().isEmpty();
}
