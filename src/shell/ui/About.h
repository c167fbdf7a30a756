#pragma once

#include <QDialog>

// "Програма...": the product, its version, and a way to the machine's system information.
class About final : public QDialog
{
    Q_OBJECT
public:
    explicit About(QWidget *parent = nullptr);

    // The path of a system-information tool of this machine, or empty when there is none.
    static QString systemInformationTool();

private:
    void showSystemInformation();
};
