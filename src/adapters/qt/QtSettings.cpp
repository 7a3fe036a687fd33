#include "adapters/qt/QtSettings.h"

#include "adapters/qt/QtText.h"

namespace quavernet {

namespace {

QString Key(const std::string& section, const std::string& name) {
    return ToQString(section + "/" + name);
}

} // namespace

QSettings& QtSettings::Store(const std::string& application) {
    if (!m_store || m_application != application) {
        const auto separator = application.find('\\');
        const std::string product =
            separator == std::string::npos ? std::string() : application.substr(separator + 1);
        m_store =
            std::make_unique<QSettings>(ToQString(application.substr(0, separator)), ToQString(product));
        m_store->setFallbacksEnabled(false);
        m_application = application;
    }
    return *m_store;
}

std::optional<std::string> QtSettings::Query(const std::string& application, const std::string& section,
                                             const std::string& name) {
    const QVariant value = Store(application).value(Key(section, name));
    if (!value.isValid()) {
        return std::nullopt;
    }
    return value.typeId() == QMetaType::QByteArray ? value.toByteArray().toStdString()
                                                   : FromQString(value.toString());
}

void QtSettings::Set(const std::string& application, const std::string& section, const std::string& name,
                     const std::string& value) {
    // A folder's name may be no UTF-8: such a text is kept as its bytes, or it would name another folder.
    const QString text = ToQString(value);
    Store(application)
        .setValue(Key(section, name),
                  FromQString(text) == value ? QVariant(text) : QVariant(QByteArray::fromStdString(value)));
}

std::string QtSettings::Place() const {
    return m_store ? FromQString(m_store->fileName()) : std::string();
}

void QtSettings::Sync() {
    if (m_store) {
        m_store->sync();
    }
}

} // namespace quavernet
