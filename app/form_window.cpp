#include "form_window.h"

#include <QCheckBox>
#include <QFocusEvent>
#include <QFontMetricsF>
#include <QGroupBox>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "accessibility.h"
#include "events/events.h"
#include "ui/layout.h"

namespace quorvel {

namespace {

Qt::Alignment alignmentOf(const ControlView& v) {
  return v.alignLeft ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignCenter;
}

QColor blend(const QColor& a, const QColor& b) {
  return QColor((a.red() + b.red()) / 2, (a.green() + b.green()) / 2, (a.blue() + b.blue()) / 2);
}

// Sets `role` for the active and inactive groups, and a faded version for disabled widgets.
void setInk(QPalette& pal, QPalette::ColorRole role, const QColor& ink, const QColor& back) {
  pal.setColor(QPalette::Active, role, ink);
  pal.setColor(QPalette::Inactive, role, ink);
  pal.setColor(QPalette::Disabled, role, blend(ink, back));
}

void applyColours(QWidget* w, Kind kind, const QColor& back, const QColor& fore) {
  QPalette pal = w->palette();
  switch (kind) {
    case Kind::TextBox:
      pal.setColor(QPalette::Base, back);
      pal.setColor(QPalette::Window, back);
      setInk(pal, QPalette::Text, fore, back);
      break;
    case Kind::CommandButton:
      pal.setColor(QPalette::Button, back);
      pal.setColor(QPalette::Window, back);
      setInk(pal, QPalette::ButtonText, fore, back);
      break;
    case Kind::CheckBox:
    case Kind::OptionButton:
      // A button fills its background from the Button role.
      pal.setColor(QPalette::Button, back);
      [[fallthrough]];
    case Kind::Label:
    case Kind::Frame:
      pal.setColor(QPalette::Window, back);
      setInk(pal, QPalette::WindowText, fore, back);
      w->setAutoFillBackground(true);
      break;
    default:
      return;
  }
  w->setPalette(pal);
}

QString qs(const std::string& s) {
  return QString::fromStdString(s);
}

bool personsFocus(Qt::FocusReason reason) {
  return reason == Qt::MouseFocusReason || reason == Qt::TabFocusReason ||
         reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
}

}  // namespace

// A control, the widget that shows it, and how the view describes it.
struct FormWindow::Binding {
  Binding(Control& control, QWidget* widget, const ControlView& v)
      : c(control), w(widget), view(v) {}
  Control& c;
  QWidget* w;
  const ControlView& view;
  TextView* text = nullptr;    // the widget, when a text box's
  bool pictureButton = false;  // a command button drawn as its picture
};

FormWindow::FormWindow(MatchForm& f, FormWindowId window)
    : QWidget(nullptr), f_(f), view_(f, window), style_(std::make_unique<ScaledStyle>()) {
  showsView_.resize(view_.controls().size());
  resize(naturalSize());
  setMinimumSize(naturalSize() / 3);
  installPictureAccessibility();
}

FormWindow::~FormWindow() {
  // The widgets use the style; they go first.
  for (QWidget* w : findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) delete w;
}

QSize FormWindow::naturalSize() const {
  const ClientSize client = view_.client();
  return QSize(static_cast<int>(std::lround(client.width / kTwipsPerPixel)),
               static_cast<int>(std::lround(client.height / kTwipsPerPixel)));
}

QWidget* FormWindow::makeWidget(Control& c, QWidget* parent) {
  auto clicks = [this, &c](auto* widget, auto signal) {
    connect(widget, signal, this, [this, &c] { forward(c); });
    return widget;
  };
  switch (c.kind) {
    case Kind::Picture:
      return clicks(new PictureView(static_cast<Picture&>(c), parent), &PictureView::clicked);
    case Kind::CommandButton: {
      auto& button = static_cast<CommandButton&>(c);
      QAbstractButton* b = nullptr;
      if (!button.Image.empty())
        b = new PictureButton(button, parent);
      else
        b = new QPushButton(parent);
      return clicks(b, &QAbstractButton::clicked);
    }
    case Kind::CheckBox:
      return clicks(new QCheckBox(parent), &QAbstractButton::clicked);
    case Kind::OptionButton: {
      // The model decides which one of a group is on; its group, the buttons of its frame,
      // is one Tab stop with the arrow keys inside, as Qt does it for exclusive buttons.
      return clicks(new QRadioButton(parent), &QAbstractButton::clicked);
    }
    case Kind::TextBox:
      return makeTextView(static_cast<TextBox&>(c), parent);
    case Kind::ScrollBar:
      return makeScrollBar(static_cast<ScrollBar&>(c), parent);
    case Kind::Frame:
      return new QGroupBox(parent);
    case Kind::Label: {
      auto* l = new QLabel(parent);
      l->setWordWrap(true);
      l->setAlignment(Qt::AlignCenter);
      l->setMargin(2);
      return l;
    }
  }
  return nullptr;
}

QWidget* FormWindow::makeTextView(TextBox& box, QWidget* parent) {
  auto* t = new TextView(parent);
  connect(t, &TextView::clicked, this, [this, &box] { forward(box); });
  connect(t, &QLineEdit::textEdited, this, [this, &box, t](const QString& text) {
    emit aboutToHandle();
    if (!userEdit(f_, box, text.toStdString())) {
      const QSignalBlocker quiet(t);
      t->setText(qs(box.Text));
    }
    emit handled();
  });
  return t;
}

QWidget* FormWindow::makeScrollBar(ScrollBar& bar, QWidget* parent) {
  auto* s = new ScrollView(Qt::Horizontal, parent);
  s->setFocusPolicy(Qt::StrongFocus);
  connect(s, &QScrollBar::valueChanged, this, [this, &bar](int value) {
    if (syncing_) return;
    emit aboutToHandle();
    userScroll(f_, bar, value);
    emit handled();
  });
  return s;
}

QWidget* FormWindow::bind(Control& c) {
  QWidget* parent = this;
  if (c.parent != nullptr) {
    auto it = byName_.find(c.parent->name);
    if (it != byName_.end()) parent = it->second;
  }
  QWidget* w = makeWidget(c, parent);
  w->setObjectName(qs(c.name));
  w->setStyle(style_.get());
  w->installEventFilter(this);
  const ControlView& v = *view_.find(c);
  bindings_.push_back(std::make_unique<Binding>(c, w, v));
  byName_[c.name] = w;
  Binding& b = *bindings_.back();
  showsOf(v).binding = &b;
  b.text = qobject_cast<TextView*>(w);
  b.pictureButton = qobject_cast<PictureButton*>(w) != nullptr;
  if (b.text != nullptr) b.text->setAlignment(alignmentOf(v));
  if (auto* picture = qobject_cast<PictureView*>(w))
    picture->setClickable(static_cast<bool>(c.Click));
  applyFont(b);
  syncing_ = true;
  showChange(
      b, FormView::Change{static_cast<int>(&v - view_.controls().data()), true, true, true, true});
  syncing_ = false;
  return w;
}

void FormWindow::bindPiece(Picture& p, const TextBox* number) {
  if (pieces_ == nullptr) {
    pieces_ = new PiecesView(this);
    pieces_->setGeometry(rect());
  }
  pieces_->add(p, number);
  const ControlView& v = *view_.find(p);
  showsOf(v).piece = pieces_->count() - 1;
  pieces_->show(showsOf(v).piece, v, true);
}

void FormWindow::standPiecesOn(const Picture& ground) {
  ground_ = qobject_cast<PictureView*>(widgetFor(ground.name));
  showPiecesOnGround();
}

void FormWindow::showPiecesOnGround() {
  if (pieces_ == nullptr || ground_ == nullptr) return;
  // What is stacked between the ground and the layer hides the ground's pieces under it.
  std::vector<QRect> hidden;
  const QObjectList& stack = children();
  for (auto it = std::find(stack.begin(), stack.end(), ground_) + 1;
       it != stack.end() && *it != pieces_; ++it)
    if ((*it)->isWidgetType()) {
      const QRect r = static_cast<QWidget*>(*it)->geometry() & ground_->geometry();
      if (!r.isEmpty()) hidden.push_back(r);
    }
  pieces_->standOn(ground_, std::move(hidden));
}

double FormWindow::legibleScale() const {
  return view_.legibleScale();
}

void FormWindow::nameForAssistiveTech(Binding& b) {
  // Pictures and texts are asked for their names when read; a caption that says what its
  // control is is the name Qt reports already.
  const ControlView& v = b.view;
  if (b.c.kind == Kind::Picture || b.pictureButton || v.role == Role::Text) return;
  const bool captioned = b.c.kind != Kind::TextBox && b.c.kind != Kind::ScrollBar;
  if (captioned && v.name == v.caption) return;
  if (const QString name = qs(v.name); b.w->accessibleName() != name) b.w->setAccessibleName(name);
}

QString FormWindow::accessibleNameOf(const QWidget* w) const {
  for (const auto& b : bindings_)
    if (b->w == w) return accessibleNameOf(b->c);
  return {};
}

QString FormWindow::accessibleNameOf(const Control& c) const {
  // Asked for when read, so the name is the form's as it is now.
  return qs(spokenName(f_, c));
}

QWidget* FormWindow::widgetFor(const std::string& name) const {
  auto it = byName_.find(name);
  return it == byName_.end() ? nullptr : it->second;
}

void FormWindow::forward(Control& c) {
  emit aboutToHandle();
  userClick(f_, c);
  emit handled();
  // Qt ticks a box or chooses an option when it is clicked, before the game has its say; the
  // game may say no, and then nothing of it changed in the view.
  const ControlView* v = view_.find(c);
  if (v == nullptr) return;
  if (Binding* b = showsOf(*v).binding)
    if (c.kind == Kind::CheckBox || c.kind == Kind::OptionButton) showToggle(*b);
}

bool FormWindow::onAPieceAbove(QObject* watched, QEvent* e) const {
  const auto type = e->type();
  if (pieces_ == nullptr ||
      (type != QEvent::MouseButtonPress && type != QEvent::MouseButtonRelease &&
       type != QEvent::MouseButtonDblClick))
    return false;
  // Only what is stacked under the layer (the pitch, the goals, a banner under the pitch).
  const QObjectList& stack = children();
  const auto under = std::find(stack.begin(), stack.end(), watched);
  if (under == stack.end() || std::find(under, stack.end(), pieces_) == stack.end()) return false;
  const auto* widget = static_cast<QWidget*>(watched);
  const QPoint at = widget->mapTo(this, static_cast<QMouseEvent*>(e)->position().toPoint());
  return pieces_->pieceAt(at) >= 0;
}

bool FormWindow::keyAsTheViewSays(QObject* watched, QEvent* e) {
  if (e->type() != QEvent::KeyPress) return false;
  const ControlView* v = view_.find(watched->objectName().toStdString());
  if (v == nullptr) return false;
  const int key = static_cast<QKeyEvent*>(e)->key();
  // Space on a button is Qt's own; Enter on a push button is not.
  if ((key == Qt::Key_Return || key == Qt::Key_Enter) && v->pressable &&
      qobject_cast<QPushButton*>(static_cast<QWidget*>(watched)) != nullptr) {
    static_cast<QPushButton*>(watched)->click();
    return true;
  }
  Arrow arrow{};
  switch (key) {
    case Qt::Key_Up:
      arrow = Arrow::Up;
      break;
    case Qt::Key_Down:
      arrow = Arrow::Down;
      break;
    case Qt::Key_Left:
      arrow = Arrow::Left;
      break;
    case Qt::Key_Right:
      arrow = Arrow::Right;
      break;
    default:
      return false;
  }
  view_.look();  // the arrows go by where things stand now
  const ArrowMove move = view_.arrow(v->control->name, arrow);
  if (move.own) return false;
  QWidget* to = widgetFor(move.to);
  if (to == nullptr) return true;  // nowhere to go that way
  const bool back = arrow == Arrow::Up || arrow == Arrow::Left;
  to->setFocus(back ? Qt::BacktabFocusReason : Qt::TabFocusReason);
  if (move.press) forward(*view_.find(move.to)->control);
  return true;
}

bool FormWindow::eventFilter(QObject* watched, QEvent* e) {
  // A piece is a picture of its own: a click on it reaches nothing under it.
  if (onAPieceAbove(watched, e)) return true;
  if (e->type() == QEvent::KeyPress && keyAsTheViewSays(watched, e)) return true;
  if (e->type() == QEvent::FocusIn && !syncing_) {
    const auto reason = static_cast<QFocusEvent*>(e)->reason();
    if (personsFocus(reason)) {
      const std::string name = watched->objectName().toStdString();
      if (byName_.count(name) != 0) f_.ActiveControl = name;
    }
  }
  return QWidget::eventFilter(watched, e);
}

void FormWindow::syncFromModel() {
  showChanges(view_.glance(), false);
}

void FormWindow::syncTicked() {
  showChanges(view_.glanceAfterTicks(), true);
}

void FormWindow::showChanges(const std::vector<FormView::Change>& changes, bool ticking) {
  syncing_ = true;
  ticking_ = ticking;
  // Any look at every control puts a text box painted away back where its widget stands.
  if (!ticking)
    for (auto& b : bindings_)
      if (b->text != nullptr && b->text->away()) place(*b);
  for (const FormView::Change& change : changes) {
    const Shows& shows = showsView_[static_cast<std::size_t>(change.index)];
    if (shows.piece >= 0)
      pieces_->show(shows.piece, view_.controls()[static_cast<std::size_t>(change.index)],
                    change.redrawn);
    else if (shows.binding != nullptr)
      showChange(*shows.binding, change);
  }
  syncing_ = ticking_ = false;
}

void FormWindow::showChange(Binding& b, const FormView::Change& change) {
  const ControlView& v = b.view;
  QWidget* w = b.w;
  // A picture's size is part of its look.
  if (change.moved || change.redrawn) place(b);
  if (change.redrawn) w->setEnabled(v.enabled);
  if (change.recoloured) applyColours(w, b.c.kind, toQColor(v.back), toQColor(v.fore));
  if (change.restated) {
    w->setVisible(v.shown);
    w->setToolTip(qs(v.tip));
    nameForAssistiveTech(b);
    if (b.text == nullptr) applyFont(b);  // a text box's type fits its text, shown below
  }
  switch (b.c.kind) {
    case Kind::Picture:
      if (change.redrawn) static_cast<PictureView*>(w)->refresh();
      break;
    case Kind::CommandButton:
      if (b.pictureButton && change.redrawn)
        static_cast<PictureButton*>(w)->refresh();
      else if (!b.pictureButton && change.restated)
        static_cast<QPushButton*>(w)->setText(qs(v.caption));
      break;
    case Kind::CheckBox:
    case Kind::OptionButton:
      if (change.restated) {
        static_cast<QAbstractButton*>(w)->setText(qs(v.caption));
        showToggle(b);
        applyTabStop(b);
      }
      break;
    case Kind::TextBox:
      showTextBox(b, change);
      break;
    case Kind::ScrollBar:
      if (change.restated) showScrollBar(b);
      break;
    case Kind::Frame:
      if (change.restated) static_cast<QGroupBox*>(w)->setTitle(qs(v.caption));
      break;
    case Kind::Label:
      if (change.restated) static_cast<QLabel*>(w)->setText(qs(v.caption));
      break;
  }
}

void FormWindow::showToggle(Binding& b) {
  auto* button = static_cast<QAbstractButton*>(b.w);
  if (const bool on = b.view.checked == 1; button->isChecked() != on) button->setChecked(on);
}

void FormWindow::showTextBox(Binding& b, const FormView::Change& change) {
  TextView* edit = b.text;
  if (change.restated) {
    // Only the game's own changes are written back, so typing is never overwritten.
    if (const QString text = qs(b.view.caption); edit->text() != text) edit->setText(text);
    applyFont(b);
    if (edit->isReadOnly() != b.view.locked) {
      edit->setReadOnly(b.view.locked);
      edit->setFrame(!b.view.locked);
    }
    applyTabStop(b);
  }
  // As it looks now, with whatever this change did to it, over the window's ground that is all
  // there is under the names and scores.
  if (edit->away()) slide(edit, edit->picture(toQColor(f_.BackColor)), shownRect(b));
}

void FormWindow::showScrollBar(Binding& b) {
  auto* bar = static_cast<QScrollBar*>(b.w);
  const ControlView& v = b.view;
  bar->setRange(v.min, v.max);
  bar->setSingleStep(v.step);
  bar->setPageStep(static_cast<const ScrollBar&>(b.c).LargeChange);
  if (bar->value() != v.value) bar->setValue(v.value);
}

QRectF FormWindow::formArea() const {
  const Placement& p = view_.placement();
  const ClientSize client = view_.client();
  return QRectF(QPointF(p.x, p.y), QSizeF(client.width / kTwipsPerPixel * p.scale,
                                          client.height / kTwipsPerPixel * p.scale));
}

QRect FormWindow::pixelRect(const Control& c) const {
  // The view's edges are on whole pixels here, the window's device pixel ratio aside.
  const Control* parent = c.parent;
  PixelRect r = view_.windowRect(c);
  if (parent != nullptr && byName_.count(parent->name) != 0) {
    const PixelRect outer = view_.windowRect(*parent);
    r.x -= outer.x;
    r.y -= outer.y;
  }
  return QRect(static_cast<int>(r.x), static_cast<int>(r.y), static_cast<int>(r.width),
               static_cast<int>(r.height));
}

QRect FormWindow::shownRect(const Binding& b) {
  const PixelRect& r = b.view.rect;
  return QRect(static_cast<int>(r.x), static_cast<int>(r.y), static_cast<int>(r.width),
               static_cast<int>(r.height));
}

void FormWindow::place(Binding& b) {
  const QRect to = shownRect(b);
  if (!slides(b, to)) b.w->setGeometry(to);
  applyTabStop(b);
}

bool FormWindow::slides(Binding& b, const QRect& to) {
  auto* box = qobject_cast<TextView*>(b.w);
  if (box == nullptr) return false;
  // A text box that only moves in a tick (the names and scores step every tick after a 50/50)
  // is painted there by the window, under every control as its ground is: moving a widget
  // makes Qt work out again which of the window's controls cover which. Its widget stays
  // where it stood, for assistive technology and input. Typing, or any look at every
  // control, puts the widget where the box is.
  const bool away = ticking_ && box->parentWidget() == this && b.c.Visible && !box->hasFocus() &&
                    to.size() == box->size() && to != box->geometry();
  if (away == box->away()) return away;
  box->setAway(away);
  if (!away) unslide(box);
  return away;
}

void FormWindow::slide(const QWidget* box, const QPixmap& picture, QRect to) {
  auto it = std::find_if(slid_.begin(), slid_.end(), [box](const Slid& s) { return s.box == box; });
  if (it == slid_.end()) {
    slid_.push_back({box, picture, to});
    update(to);
    return;
  }
  if (it->rect == to && it->picture.cacheKey() == picture.cacheKey()) return;
  // A step of a pixel or two: one rectangle round where it was and where it is.
  update(it->rect.intersects(to) ? QRegion(it->rect | to) : QRegion(it->rect) + to);
  it->picture = picture;
  it->rect = to;
}

void FormWindow::unslide(const QWidget* box) {
  auto it = std::find_if(slid_.begin(), slid_.end(), [box](const Slid& s) { return s.box == box; });
  if (it == slid_.end()) return;
  update(it->rect);
  slid_.erase(it);
}

void FormWindow::applyTabStop(Binding& b) {
  // The role and look are the control's for good; whether Tab stops on it is asked when what
  // decides it changed: its place (a banner), its value (an option), its lock (a text box).
  // Qt passes over what is hidden or disabled by itself.
  const ControlView* v = &b.view;
  // A text box that only says something can still be clicked into, as Qt's text boxes can.
  const bool focusable = v->focusable || b.c.kind == Kind::TextBox;
  if (!focusable) return;
  // Tab passes over it, but a click still gives it the focus (a control without any focus
  // would be left out of the Tab order when it is set). A click on a flag leaves the focus
  // where it was: the flag goes at once.
  const Qt::FocusPolicy stop = v->bare ? Qt::TabFocus : Qt::StrongFocus;
  const Qt::FocusPolicy policy = view_.tabStopWhenReachable(b.c) ? stop : Qt::ClickFocus;
  if (b.w->focusPolicy() != policy) b.w->setFocusPolicy(policy);
}

void FormWindow::applyFont(Binding& b) {
  const ControlView& v = b.view;
  QFont font = b.w->font();
  font.setBold(v.bold);
  font.setItalic(v.italic);
  const double px = v.fontPx;
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(px))));
  if (b.text != nullptr) {
    const double needed = QFontMetricsF(font).horizontalAdvance(b.text->text());
    if (const double fitted = view_.fitted(px, b.w->width(), needed); fitted < px)
      font.setPixelSize(std::max(1, static_cast<int>(fitted)));
  }
  if (b.w->font() != font) b.w->setFont(font);
}

void FormWindow::fit() {
  view_.place(fitInto(view_.client(), width(), height()));
  style_->setScale(scale());
}

void FormWindow::relayout() {
  fit();
  // The view lists every control that moved, and every type that changed size.
  showChanges(view_.glance(), false);
  for (auto& b : bindings_) b->w->update();
  if (pieces_ != nullptr) {
    pieces_->setGeometry(rect());
    pieces_->update();
    showPiecesOnGround();
  }
}

void FormWindow::resizeEvent(QResizeEvent* e) {
  QWidget::resizeEvent(e);
  relayout();
}

void FormWindow::paintEvent(QPaintEvent* e) {
  QPainter p(this);
  // A rectangle at a time: a region of several rectangles Qt fills span by span, one
  // rectangle under its own clip it fills straight.
  const QColor back = toQColor(f_.BackColor);
  const QRegion& region = e->region();
  for (const QRect& r : region) {
    if (region.rectCount() > 1) p.setClipRect(r);
    p.fillRect(r, back);
    for (const Slid& s : slid_)
      if (s.rect.intersects(r)) p.drawPixmap(s.rect.topLeft(), s.picture);
  }
}

}  // namespace quorvel
