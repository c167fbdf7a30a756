#include "shell/cli/Command.h"

#include "shell/cli/AccountingCommand.h"
#include "shell/cli/DemoCommand.h"
#include "shell/cli/DoctorCommand.h"
#include "shell/cli/EgnCommand.h"
#include "shell/cli/HelpPathCommand.h"
#include "shell/cli/ImportLegacyCommand.h"
#include "shell/cli/ImportPostcodesCommand.h"
#include "shell/cli/ImportZoksCommand.h"
#include "shell/cli/PrintCommand.h"
#include "shell/cli/ReportCommand.h"
#include "shell/cli/UpkeepCommands.h"

std::vector<std::unique_ptr<Command>> allCommands()
{
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<EgnCommand>());
    commands.push_back(std::make_unique<DemoCommand>());
    commands.push_back(std::make_unique<ImportPostcodesCommand>());
    commands.push_back(std::make_unique<DoctorCommand>());
    commands.push_back(std::make_unique<HelpPathCommand>());
    commands.push_back(std::make_unique<ImportZoksCommand>());
    commands.push_back(std::make_unique<ImportLegacyCommand>());
    commands.push_back(std::make_unique<PrintCommand>());
    commands.push_back(std::make_unique<ReportCommand>());
    commands.push_back(std::make_unique<AccountingCommand>());
    commands.push_back(std::make_unique<BackupCommand>());
    commands.push_back(std::make_unique<RestoreCommand>());
    commands.push_back(std::make_unique<RepairCommand>());
    commands.push_back(std::make_unique<CleanOutCommand>());
    return commands;
}

std::unique_ptr<Command> findCommand(const QString &name)
{
    for (auto &command : allCommands())
        if (command->name() == name)
            return std::move(command);
    return nullptr;
}
