#include "playback/PlayerTexts.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "ui_frmPlayer.h"

#include <QAction>
#include <QMenu>

namespace quavernet {

namespace {

void Scale(QWidget& widget, double factor, bool bold) {
    QFont font = widget.font();
    font.setPointSizeF(font.pointSizeF() * factor);
    font.setBold(bold);
    widget.setFont(font);
}

} // namespace

void DressPlayer(Ui::frmPlayer& ui) {
    constexpr double TitleFactor = 1.15;
    constexpr double TimeFactor = 1.7;
    Scale(*ui.lblFile, TitleFactor, true);
    Scale(*ui.lblTime, TimeFactor, false);
    // Room for the longest texts, so that nothing around them moves when they change.
    const auto reserve = [](QLabel& label, const QString& longest) {
        label.setMinimumWidth(label.fontMetrics().horizontalAdvance(longest));
    };
    reserve(*ui.lblTime, QStringLiteral("000:00"));
    ui.lblTime->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    reserve(*ui.lblPercent, QStringLiteral("100 %"));
    // The buttons are texts that react to a click, and to the keyboard.
    for (QToolButton* button : {ui.cmdRandomize, ui.cmdAdd, ui.cmdRem, ui.cmdRemAll, ui.cmdLoadPlaylist,
                                ui.cmdCreatePlaylist, ui.cmdCreateCategory}) {
        button->setAutoRaise(false);
        button->setToolButtonStyle(Qt::ToolButtonTextOnly);
        button->setFocusPolicy(Qt::TabFocus);
        button->setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Fixed);
    }
    ui.cmdRandomize->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void LoadPlayerStrings(Ui::frmPlayer& ui, QMenu& add) {
    const auto text = [](std::int32_t id) { return ToQString(LoadResString(id)); };
    ui.Label->setText(text(550));
    ui.cmdAdd->setText(text(551));
    ui.cmdRem->setText(text(552));
    ui.cmdRemAll->setText(text(553));
    ui.cmdLoadPlaylist->setText(text(554));
    ui.cmdCreatePlaylist->setText(text(555));
    ui.cmdCreateCategory->setText(text(556));
    ui.chkRepeat->setText(text(557));
    ui.chkRepeatAll->setText(text(558));
    ui.cmdRandomize->setText(text(559));
    ui.Slider1->setAccessibleName(text(786));
    ui.Slider3->setAccessibleName(text(550));
    ui.lstFiles->setAccessibleName(text(787));
    const auto caption = [&](const char* name, std::int32_t id) {
        add.findChild<QAction*>(QLatin1String(name))->setText(text(id));
    };
    caption("mnuAddFile", 784);
    caption("mnuAddFolder", 785);
}

} // namespace quavernet
