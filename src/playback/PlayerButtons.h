// The looks of the player's seven picture buttons: which of them is blue follows the mouse over the buttons
// and over what is around them. frmPlayer makes it.
#pragma once

#include <QObject>

#include <array>

class QWidget;

namespace quavernet {

class PictureButton;

class PlayerButtons : public QObject {
    Q_OBJECT
public:
    /// Takes the seven buttons, and the surfaces around them, by their names out of the window.
    explicit PlayerButtons(QWidget& window);

    /// Tool tips, which are the names that a screen reader says too.
    void LoadStrings();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static constexpr std::size_t Count = 7;

    /// All but one.
    void SetAtRest(const PictureButton* except = nullptr);

    std::array<PictureButton*, Count> m_buttons{};
    PictureButton* m_maindialog = nullptr;
};

} // namespace quavernet
