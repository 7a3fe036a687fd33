// The settings store on QSettings: one group per section, every value a text.
#pragma once

#include "platform/Services.h"

#include <QSettings>

#include <memory>

namespace quavernet {

class QtSettings : public SettingsStore {
public:
    std::optional<std::string> Query(const std::string& application, const std::string& section,
                                     const std::string& name) override;
    void Set(const std::string& application, const std::string& section, const std::string& name,
             const std::string& value) override;

    std::string Place() const override;

    /// Brings written values to disk; needed before the process ends without unwinding.
    void Sync();

private:
    QSettings& Store(const std::string& application);

    std::string m_application;
    std::unique_ptr<QSettings> m_store; ///< Of m_application: all callers pass the same one.
};

} // namespace quavernet
