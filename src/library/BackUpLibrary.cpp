#include "library/BackUpLibrary.h"

#include "app/MainModule.h"
#include "platform/LibraryError.h"

namespace quavernet {

std::string BackUpLibrary() {
    try {
        mainModule.Connection->Backup();
    } catch (const LibraryError& error) {
        if (error.Fault() == LibraryFault::Damaged || error.Fault() == LibraryFault::Moved) {
            throw;
        }
        return error.Description();
    } catch (const RuntimeError& error) {
        return error.Description();
    }
    return {};
}

} // namespace quavernet
