#include "widgets/AccessibleParts.h"

#include <QAccessibleWidget>
#include <QPointer>
#include <QWidget>

namespace quavernet {

namespace {

class PartInterface : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    PartInterface(QWidget& control, const PartedControl& parted, int number)
        : m_control(&control), m_parted(parted), m_number(number) {}

    bool isValid() const override { return !m_control.isNull(); }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(m_control.data());
    }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? Part().Name : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override {
        const QRect place = Part().Place;
        return {m_control->mapToGlobal(place.topLeft()), place.size()};
    }
    QAccessible::Role role() const override { return Part().Role; }
    QAccessible::State state() const override {
        const AccessiblePart part = Part();
        QAccessible::State state;
        state.focusable = part.Focusable;
        state.focused = part.Focused && m_control->hasFocus();
        state.checkable = part.Focusable;
        state.checked = part.Checked;
        state.disabled = !m_control->isEnabled();
        state.invisible = !m_control->isVisible();
        state.readOnly = !part.Focusable;
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    QStringList actionNames() const override {
        return Part().Focusable ? QStringList{pressAction()} : QStringList{};
    }
    void doAction(const QString& action) override {
        if (action == pressAction() && m_control->isEnabled()) {
            dynamic_cast<PartedControl&>(*m_control).PressPart(m_number);
        }
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    AccessiblePart Part() const { return m_parted.Parts().at(static_cast<std::size_t>(m_number)); }

    QPointer<QWidget> m_control;
    const PartedControl& m_parted; ///< Valid while the control is.
    int m_number;
};

class PartedInterface : public QAccessibleWidget {
public:
    PartedInterface(QWidget& control, const PartedControl& parted)
        : QAccessibleWidget(&control, parted.PartedRole()), m_parted(parted) {
        for (std::size_t part = 0; part < parted.Parts().size(); ++part) {
            auto* made = new PartInterface(control, parted, static_cast<int>(part));
            m_parts.push_back(QAccessible::registerAccessibleInterface(made)); // It owns them.
        }
    }
    ~PartedInterface() override {
        for (const QAccessible::Id part : m_parts) {
            QAccessible::deleteAccessibleInterface(part);
        }
    }
    PartedInterface(const PartedInterface&) = delete;
    PartedInterface& operator=(const PartedInterface&) = delete;

    int childCount() const override { return Painted() + static_cast<int>(Controls().size()); }
    QAccessibleInterface* child(int number) const override {
        if (number < 0 || number >= childCount()) {
            return nullptr;
        }
        return number < Painted()
                   ? QAccessible::accessibleInterface(m_parts[static_cast<std::size_t>(number)])
                   : QAccessible::queryAccessibleInterface(Controls().at(number - Painted()));
    }
    int indexOfChild(const QAccessibleInterface* wanted) const override {
        for (int number = 0; number < childCount(); ++number) {
            if (child(number) == wanted) {
                return number;
            }
        }
        return -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        for (int number = 0; number < childCount(); ++number) {
            if (child(number)->rect().contains(x, y)) {
                return child(number);
            }
        }
        return nullptr;
    }
    QAccessibleInterface* focusChild() const override {
        const std::vector<AccessiblePart> parts = m_parted.Parts();
        for (int number = 0; number < Painted(); ++number) {
            if (parts[static_cast<std::size_t>(number)].Focused && widget()->hasFocus()) {
                return child(number);
            }
        }
        return nullptr;
    }

private:
    int Painted() const { return static_cast<int>(m_parts.size()); }

    // Real controls inside it that take the keyboard come after the painted pieces.
    QWidgetList Controls() const {
        QWidgetList controls;
        for (QWidget* inner : widget()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            if (inner->focusPolicy() != Qt::NoFocus) {
                controls.append(inner);
            }
        }
        return controls;
    }

    const PartedControl& m_parted;
    std::vector<QAccessible::Id> m_parts;
};

// Asked for each class of an object, from its own to the most general.
QAccessibleInterface* MakeInterface(const QString& className, QObject* object) {
    auto* control = qobject_cast<QWidget*>(object);
    if (control == nullptr) {
        return nullptr;
    }
    if (const auto* parted = dynamic_cast<PartedControl*>(object)) {
        return new PartedInterface(*control, *parted);
    }
    // The toolkit takes a window that is neither a dialog nor a main window for a mere part of one.
    const bool isWindow = className == QLatin1String(QWidget::staticMetaObject.className()) &&
                          control->windowType() == Qt::Window;
    return isWindow ? new QAccessibleWidget(control, QAccessible::Window) : nullptr;
}

} // namespace

void InstallAccessibleParts() {
    QAccessible::installFactory(MakeInterface);
}

void TellFocusedPart(QWidget& control, int part) {
    QAccessibleEvent event(&control, QAccessible::Focus);
    event.setChild(part);
    QAccessible::updateAccessibility(&event);
}

} // namespace quavernet
