#include "shell/Startup.h"

#include "base/RunState.h"
#include "store/Sql.h"

Result<bool> CheckDoctors()
{
    try {
        QSqlQuery first = store::run(store::clinicDb(),
                                     QStringLiteral("SELECT KodMedic, Names FROM Medic ORDER BY ID LIMIT 1"));
        if (!first.next())
            return Result<bool>::success(false);
        run().CurrentMedicCode = first.value(0).toString().trimmed();
        run().CurrentMedicName = first.value(1).toString().trimmed();
        return Result<bool>::success(true);
    } catch (const store::SqlError &error) {
        return Result<bool>::failure(error.message());
    }
}
