#include "store/Databases.h"

#include "store/Scratch.h"
#include "store/Sql.h"

namespace store {

Databases openedDatabases() { return {clinicDb(), dataDb(), scratchDb()}; }

} // namespace store
