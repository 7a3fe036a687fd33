// Frame2, the strip of letters above the list: "all", A to Z and "other". The list pane shows it; a click
// sets the letter filter and asks for a reload.
#pragma once

#include "mainwindow/MainLayout.h"

#include <QFrame>
#include <QLabel>

#include <string>
#include <vector>

namespace quavernet {

class LetterLabel : public QLabel {
    Q_OBJECT
public:
    LetterLabel(const QString& name, std::string filter, QWidget* parent);

    const std::string& Filter() const { return m_filter; }

signals:
    void Entered();
    void Clicked();

protected:
    void enterEvent(QEnterEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    std::string m_filter;
};

class LetterRow : public QFrame {
    Q_OBJECT
public:
    explicit LetterRow(QWidget* parent);

    void LoadStrings();
    void ResetLetterColors();
    void ResetLetterBold();

    /// Marks "all" as the active letter, as at each start.
    void MarkAll();

    using LetterBoxes = std::array<ControlBox, LetterLabelCount>;

    /// Where the labels stand, in twips; fixed places keep them packed on a small screen.
    LetterBoxes Boxes() const;
    void SetBoxes(const LetterBoxes& boxes);

signals:
    void LetterChosen(); ///< mainModule.LetterFilter has its new value.
    void MouseMoved();

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void AddLabel(const QString& name, const QString& text, std::string filter);
    void PlaceLabels();
    int LabelWidth(const LetterLabel& label) const;
    void ColorLabel(LetterLabel& label, bool hovered);

    std::vector<LetterLabel*> m_labels;
    bool m_placesFixed = false;
};

} // namespace quavernet
