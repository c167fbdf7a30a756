#pragma once

#include "base/Dialogs.h"

class QWidget;

// The real dialog windows behind dialogs(), owned by the active window of the moment.
class WidgetDialogs final : public DialogPort
{
public:
    void information(const QString &message) override;
    bool confirmExit() override;
    DateChoice chooseDate() override;
    std::unique_ptr<ProgressPort> progress(const QString &message, int rows) override;

protected:
    bool askQuestion(const QString &message, const QString &title) override;
};
