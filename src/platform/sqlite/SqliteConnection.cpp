#include "platform/sqlite/SqliteConnection.h"
