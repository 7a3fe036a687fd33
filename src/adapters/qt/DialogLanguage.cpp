#include "adapters/qt/DialogLanguage.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace quavernet {

void SetDialogLanguage(const std::string& language) {
    const QString name = QStringLiteral("QuavernetDialogLanguage");
    auto* translator = qApp->findChild<QTranslator*>(name);
    if (translator == nullptr) {
        translator = new QTranslator(qApp);
        translator->setObjectName(name);
    }
    QCoreApplication::removeTranslator(translator);
    if (language == "GER" &&
        translator->load(QStringLiteral("qtbase_de"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(translator);
    }
}

} // namespace quavernet
