// The settings store on QSettings: one group per section, every value a text. The toolkit gathers writes; the
// next question, or the event loop, finds out whether they have reached the file, and a failed one is undone.
#pragma once

#include "platform/Services.h"

#include <QHash>
#include <QSettings>
#include <QTimer>
#include <QVariant>

#include <memory>

namespace quavernet {

class QtSettings : public SettingsStore {
public:
    QtSettings();

    std::optional<std::string> Query(const std::string& application, const std::string& section,
                                     const std::string& name) override;
    void Set(const std::string& application, const std::string& section, const std::string& name,
             const std::string& value) override;

    std::string Place() const override;

    /// Brings written values to disk; needed before the process ends without unwinding.
    void Sync();

private:
    QSettings& Store(const std::string& application);
    void Open();

    /// Writes what is still held in memory. Where that fails, the old values come back.
    void Settle();

    std::string m_application;
    std::unique_ptr<QSettings> m_store; ///< Of m_application: all callers pass the same one.
    QHash<QString, QVariant>
        m_before;  ///< Old values of the keys set since the last Settle; invalid for none.
    QTimer m_soon; ///< Settles when the events of this moment are through.
};

} // namespace quavernet
