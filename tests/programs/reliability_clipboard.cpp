// Prints the text that the clipboard of the screen holds, in UTF-8. Called by the scripts that read what a
// box says: its user marks the text and copies it.
#include <QClipboard>
#include <QGuiApplication>

#include <cstdio>

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    const QByteArray text = QGuiApplication::clipboard()->text().toUtf8();
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stdout);
    return 0;
}
