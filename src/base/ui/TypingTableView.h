#pragma once

#include <QTableView>

// A grid in which Escape never throws away what is being typed into a cell unseen: an open
// editor whose text differs from the stored value asks first. ДА gives the typing up, НЕ keeps
// the editor open with the text as it was typed.
class TypingTableView : public QTableView
{
    Q_OBJECT
public:
    explicit TypingTableView(QWidget *parent = nullptr);

protected:
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    bool editorHoldsTyping(const QWidget *editor) const;
};
