#include "accessibility.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QLineEdit>
#include <QPointer>
#include <vector>

#include "control_views.h"
#include "form_window.h"
#include "pieces_view.h"
#include "ui/accessible_names.h"

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

// A piece on the layer of pieces: no widget of its own, so its layer answers for it.
class PieceAccessible : public QAccessibleInterface {
 public:
  PieceAccessible(PiecesView* layer, int i) : layer_(layer), i_(i) {}
  bool isValid() const override { return !layer_.isNull(); }
  QObject* object() const override { return nullptr; }
  QWindow* window() const override { return layer_->window()->windowHandle(); }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(layer_.data());
  }
  QAccessibleInterface* child(int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QString text(QAccessible::Text t) const override {
    const auto* form = qobject_cast<const FormWindow*>(layer_->window());
    if (t != QAccessible::Name || form == nullptr) return {};
    return form->accessibleNameOf(layer_->picture(i_));
  }
  void setText(QAccessible::Text, const QString&) override {}
  QRect rect() const override {
    const QRect r = layer_->rectOf(i_);
    return QRect(layer_->mapToGlobal(r.topLeft()), r.size());
  }
  QAccessible::Role role() const override { return QAccessible::Graphic; }
  QAccessible::State state() const override {
    QAccessible::State state;
    state.invisible = !layer_->isVisible() || !layer_->shown(i_);
    return state;
  }

 private:
  QPointer<PiecesView> layer_;
  int i_;
};

// The layer: a group of the pieces, each a child registered once and gone with the layer.
class PiecesAccessible : public QAccessibleWidget {
 public:
  explicit PiecesAccessible(PiecesView* layer)
      : QAccessibleWidget(layer, QAccessible::Grouping), layer_(layer) {}
  ~PiecesAccessible() override {
    for (QAccessible::Id id : ids_) QAccessible::deleteAccessibleInterface(id);
  }
  QString text(QAccessible::Text t) const override {
    if (t == QAccessible::Name) return QString::fromUtf8(kPiecesName.data(), kPiecesName.size());
    return QAccessibleWidget::text(t);
  }
  int childCount() const override { return layer_->count(); }
  QAccessibleInterface* child(int i) const override {
    if (i < 0 || i >= layer_->count()) return nullptr;
    ids_.resize(static_cast<std::size_t>(layer_->count()), 0);
    QAccessible::Id& id = ids_[static_cast<std::size_t>(i)];
    if (id == 0) id = QAccessible::registerAccessibleInterface(new PieceAccessible(layer_, i));
    return QAccessible::accessibleInterface(id);
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    for (std::size_t i = 0; i < ids_.size(); ++i)
      if (ids_[i] != 0 && QAccessible::accessibleInterface(ids_[i]) == child)
        return static_cast<int>(i);
    return -1;
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    const int i = layer_->pieceAt(layer_->mapFromGlobal(QPoint(x, y)));
    return i < 0 ? nullptr : child(i);
  }

 private:
  PiecesView* layer_;
  mutable std::vector<QAccessible::Id> ids_;  // 0: not asked for yet
};

// A text box that only says something (the clock, a score, a caption): read as text, its name
// saying what it is and what it shows.
class TextAccessible : public QAccessibleWidget {
 public:
  explicit TextAccessible(QWidget* w) : QAccessibleWidget(w, QAccessible::StaticText) {}
  QString text(QAccessible::Text t) const override {
    if (t == QAccessible::Name) {
      if (const auto* form = qobject_cast<const FormWindow*>(widget()->window()))
        return form->accessibleNameOf(widget());
    }
    if (t == QAccessible::Value) return static_cast<const QLineEdit*>(widget())->text();
    return QAccessibleWidget::text(t);
  }
};

bool readAsText(QWidget* w) {
  const auto* form = qobject_cast<const FormWindow*>(w->window());
  const ControlView* v =
      form != nullptr ? form->view().find(w->objectName().toStdString()) : nullptr;
  return v != nullptr && v->role == Role::Text;
}

QAccessibleInterface* pictureInterface(const QString& className, QObject* object) {
  if (object == nullptr || !object->isWidgetType()) return nullptr;
  auto* w = static_cast<QWidget*>(object);
  if (className == QLatin1String(TextView::staticMetaObject.className()) && readAsText(w))
    return new TextAccessible(w);
  if (className == QLatin1String(PictureButton::staticMetaObject.className()))
    return new PictureAccessible(w, true);
  if (className == QLatin1String(PiecesView::staticMetaObject.className()))
    return new PiecesAccessible(static_cast<PiecesView*>(w));
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
