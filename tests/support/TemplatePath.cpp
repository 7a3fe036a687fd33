#include "support/TemplatePath.h"

namespace quavernet::test {

std::string TemplatePath() {
    return QUAVERNET_TEMPLATE;
}

} // namespace quavernet::test
