#include "help/QtHelpViewer.h"

#include "help/HelpSet.h"
#include "help/frmHelp.h"

namespace quavernet {

QtHelpViewer::QtHelpViewer() = default;
QtHelpViewer::~QtHelpViewer() = default;

void QtHelpViewer::DisplayTopic(const std::string& file, const std::string& page) {
    if (HelpSet(file).Find(page).isEmpty()) {
        return;
    }
    if (!m_form) {
        m_form = std::make_unique<frmHelp>();
    }
    m_form->ShowPage(file, page);
}

} // namespace quavernet
