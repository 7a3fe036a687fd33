#include "editing/CleanUpButtons.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "editing/FileNameTools.h"

#include <QPushButton>

namespace quavernet {

void PrepareCleanUpButtons(const CleanUpButtons& buttons, const std::function<void(const CleanUp&)>& act) {
    const auto prepare = [&act](QPushButton* button, std::int32_t caption, const CleanUp& cleanUp) {
        button->setText(ToQString(LoadResString(caption)));
        QObject::connect(button, &QPushButton::clicked, button, [act, cleanUp] { act(cleanUp); });
    };
    prepare(buttons.Underscores, 112, ReplaceUnderscores);
    prepare(buttons.Umlauts, 113, ChangeUmlauts);
    prepare(buttons.Brackets, 114, RemoveBrackets);
    prepare(buttons.Numbers, 115, RemoveNumbers);
}

} // namespace quavernet
