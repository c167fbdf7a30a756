#include "base/RunState.h"

#include "store/Sql.h"

RunState &run()
{
    static RunState state;
    return state;
}

void initRunState(const store::DataPaths &paths)
{
    RunState &state = run();
    state = RunState{};
    state.DataFolder = paths.folder;
    state.ClinicDbPath = paths.clinicDb;
    state.DataDbPath = paths.dataDb;
    state.ScratchDbPath = paths.scratchDb;
    state.ConnectMain = store::ConnectMain;
    state.ConnectData = store::ConnectData;
    state.ConnectTemp = store::ConnectTemp;
}
