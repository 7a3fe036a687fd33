#include "adapters/qt/QtSettings.h"

#include "adapters/qt/QtText.h"

namespace quavernet {

namespace {

QString Key(const std::string& section, const std::string& name) {
    return ToQString(section + "/" + name);
}

} // namespace

QtSettings::QtSettings() {
    m_soon.setSingleShot(true);
    QObject::connect(&m_soon, &QTimer::timeout, &m_soon, [this] { Settle(); });
}

QSettings& QtSettings::Store(const std::string& application) {
    if (!m_store || m_application != application) {
        Settle();
        m_application = application;
        Open();
    }
    return *m_store;
}

void QtSettings::Open() {
    const auto separator = m_application.find('\\');
    const std::string product =
        separator == std::string::npos ? std::string() : m_application.substr(separator + 1);
    m_store.reset();
    m_store = std::make_unique<QSettings>(ToQString(m_application.substr(0, separator)), ToQString(product));
    m_store->setFallbacksEnabled(false);
}

// A store remembers its first failure for ever, so that only a fresh one can tell about these writes: it
// tries again what the old one could not write.
void QtSettings::Settle() {
    if (m_before.isEmpty()) {
        return;
    }
    Open();
    if (m_store->status() == QSettings::AccessError) {
        for (auto value = m_before.cbegin(); value != m_before.cend(); ++value) {
            value->isValid() ? m_store->setValue(value.key(), *value) : m_store->remove(value.key());
        }
    }
    m_before.clear();
}

std::optional<std::string> QtSettings::Query(const std::string& application, const std::string& section,
                                             const std::string& name) {
    Settle();
    const QVariant value = Store(application).value(Key(section, name));
    if (!value.isValid()) {
        return std::nullopt;
    }
    if (value.typeId() == QMetaType::QStringList) {
        return FromQString(value.toStringList().join(u',')); // A comma that somebody typed into the file.
    }
    return value.typeId() == QMetaType::QByteArray ? value.toByteArray().toStdString()
                                                   : FromQString(value.toString());
}

void QtSettings::Set(const std::string& application, const std::string& section, const std::string& name,
                     const std::string& value) {
    QSettings& store = Store(application);
    const QString key = Key(section, name);
    if (!m_before.contains(key)) {
        m_before.insert(key, store.value(key));
    }
    // A folder's name may not be UTF-8: such a text is kept as its bytes, or it would name another folder.
    const QString text = ToQString(value);
    store.setValue(key,
                   FromQString(text) == value ? QVariant(text) : QVariant(QByteArray::fromStdString(value)));
    m_soon.start(0);
}

std::string QtSettings::Place() const {
    return m_store ? FromQString(m_store->fileName()) : std::string();
}

void QtSettings::Sync() {
    Settle();
}

} // namespace quavernet
