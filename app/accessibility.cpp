#include "accessibility.h"

#include <QAbstractButton>
#include <QAccessibleWidget>

#include "control_views.h"
#include "form_window.h"

namespace quorvel {

namespace {

class PictureAccessible : public QAccessibleWidget {
 public:
  PictureAccessible(QWidget* w, bool button)
      : QAccessibleWidget(w, button ? QAccessible::Button : QAccessible::Graphic) {}

  QString text(QAccessible::Text t) const override {
    if (t == QAccessible::Name) {
      if (const auto* form = qobject_cast<const FormWindow*>(widget()->window()))
        return form->accessibleNameOf(widget());
    }
    return QAccessibleWidget::text(t);
  }

  QStringList actionNames() const override {
    QStringList names = QAccessibleWidget::actionNames();
    if (role() == QAccessible::Button && widget()->isEnabled()) names.prepend(pressAction());
    return names;
  }

  void doAction(const QString& action) override {
    if (action != pressAction()) return QAccessibleWidget::doAction(action);
    if (!widget()->isEnabled()) return;
    if (auto* button = qobject_cast<QAbstractButton*>(widget()))
      button->click();
    else if (auto* view = qobject_cast<PictureView*>(widget()))
      view->click();
  }

  QStringList keyBindingsForAction(const QString& action) const override {
    if (action == pressAction()) return {QStringLiteral("Space")};
    return QAccessibleWidget::keyBindingsForAction(action);
  }
};

QAccessibleInterface* pictureInterface(const QString& className, QObject* object) {
  if (object == nullptr || !object->isWidgetType()) return nullptr;
  auto* w = static_cast<QWidget*>(object);
  if (className == QLatin1String(PictureButton::staticMetaObject.className()))
    return new PictureAccessible(w, true);
  if (className == QLatin1String(PictureView::staticMetaObject.className()))
    return new PictureAccessible(w, static_cast<PictureView*>(w)->clickable());
  return nullptr;
}

}  // namespace

void installPictureAccessibility() {
  static const bool installed = [] {
    QAccessible::installFactory(pictureInterface);
    return true;
  }();
  (void)installed;
}

}  // namespace quorvel
