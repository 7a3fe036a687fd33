#include "app/IdleTitle.h"

#include "app/LoadResString.h"
#include "app/Registry.h"
#include "app/TextNumbers.h"

namespace quavernet {

std::string IdleTitle() {
    return "Quavernet - " + LoadResString(Texts::LastScan) + Setting("LastScan", "-");
}

} // namespace quavernet
