#include "extras/CoverSearchOptions.h"

#include "app/Registry.h"

namespace quavernet {

namespace {

const std::string TemplateName = "Coverstring";

} // namespace

// The two readers have defaults of different sites: a user who has never stored a template searches at one
// and is shown the form of the other.
std::string SearchTemplate() {
    return Setting(TemplateName, "http://covers.example.org/search.php?action=search&what=#coverstring#"
                                 "&category=audio&submit=++Suche++");
}

std::string ShownSearchTemplate() {
    return Setting(TemplateName, ExampleSearchTemplate());
}

std::string ExampleSearchTemplate() {
    return "http://artwork.example.org/search.php?search=#coverstring#&&cat=1";
}

void SaveSearchTemplate(const std::string& text) {
    SaveSetting(TemplateName, text);
}

} // namespace quavernet
