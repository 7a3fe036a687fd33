// The help service of the running program: one help window, made when help is asked for the first time.
// RealServices owns it.
#pragma once

#include "platform/Services.h"

#include <memory>

namespace quavernet {

class frmHelp;

class QtHelpViewer : public HelpViewer {
public:
    QtHelpViewer();
    ~QtHelpViewer() override;

    void DisplayTopic(const std::string& file, const std::string& page) override;

    /// Nothing until help was asked for.
    frmHelp* Form() { return m_form.get(); }

private:
    std::unique_ptr<frmHelp> m_form;
};

} // namespace quavernet
