#include "library/FirstField.h"

#include "app/MainModule.h"

namespace quavernet {

std::string FirstField(const std::string& select) {
    ADODB::Recordset rows;
    rows.Open(select, *mainModule.Connection);
    std::string value = rows.Fields(0).Text();
    rows.Close();
    return value;
}

} // namespace quavernet
