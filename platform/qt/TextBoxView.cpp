#include "platform/qt/TextBoxView.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QIconEngine>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <algorithm>
#include <limits>

#include "platform/qt/Contrast.h"
#include "platform/qt/FormWindow.h"
#include "platform/qt/Hands.h"
#include "platform/qt/KeyCodes.h"
#include "platform/qt/Look.h"
#include "toolkit/Text.h"

namespace FendaMaestros::qt {

namespace {

/// A MaxLength beyond this, or none, is a description: it takes what room there is.
constexpr int longestFixed = 40;
constexpr int fewestDigits = 4;
constexpr int sideMargin = 3;
constexpr int digitsOfLong = 32;
/// What a button inside takes with the air around it.
constexpr int glassRoom = 26;

Qt::Alignment alignmentOf(Alignment alignment) {
    if (alignment == Alignment::Right) return Qt::AlignRight | Qt::AlignVCenter;
    if (alignment == Alignment::Center) return Qt::AlignCenter;
    return Qt::AlignLeft | Qt::AlignVCenter;
}

bool isLong(const TextBox& box) { return box.MaxLength == 0 || box.MaxLength > longestFixed; }

/// A magnifying glass in the colour of the texts of a widget, painted anew for every theme, size and state.
class Glass final : public QIconEngine {
public:
    explicit Glass(const QWidget& beside) : beside_(beside) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const double side = std::min(rect.width(), rect.height());
        const QPalette& colours = beside_.palette();
        const QColor back = colours.color(group, QPalette::Base);
        const QColor ink = mixed(colours.color(group, QPalette::Text), back, 0.25);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(QRectF(rect).center());
        painter->setPen(QPen(standingOut(ink, {back}, lineContrast), side / 9, Qt::SolidLine, Qt::RoundCap));
        painter->drawEllipse(QPointF(-side / 12, -side / 12), side / 4, side / 4);
        painter->drawLine(QPointF(side / 8, side / 8), QPointF(side / 3, side / 3));
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }
    QIconEngine* clone() const override { return new Glass(beside_); }

private:
    const QWidget& beside_;
};

/// Asks for the room of so many digits and does with less; only a long field takes more.
class Edit final : public QLineEdit {
public:
    /// `besides`: pixels that buttons inside take.
    Edit(int digits, bool grows, int besides, QWidget* parent) : QLineEdit(parent), digits_(digits), besides_(besides) {
        if (!grows) setMaximumWidth(widthOf(digits));
    }
    QSize sizeHint() const override { return {widthOf(digits_), QLineEdit::sizeHint().height()}; }
    QSize minimumSizeHint() const override {
        constexpr int enough = 10;
        return {widthOf(std::min(digits_, enough)), QLineEdit::minimumSizeHint().height()};
    }

protected:
    /// The searches stand above what can be done to any text.
    void contextMenuEvent(QContextMenuEvent* event) override {
        QMenu* const menu = createStandardContextMenu();
        menu->setAttribute(Qt::WA_DeleteOnClose);
        QAction* const first = menu->actions().isEmpty() ? nullptr : menu->actions().front();
        if (!actions().isEmpty()) menu->insertActions(first, actions());
        if (!actions().isEmpty()) menu->insertSeparator(first);
        menu->popup(event->globalPos());
    }

private:
    int widthOf(int digits) const { return fontMetrics().horizontalAdvance(QString(digits + 2, '0')) + besides_; }

    int digits_;
    int besides_;
};

Edit& makeEdit(const TextBox& box, FormWindow& window) {
    const bool grows = isLong(box);
    const int digits = grows ? digitsOfLong : std::max(box.MaxLength, fewestDigits);
    return *new Edit(digits, grows, box.Searches.empty() ? 0 : glassRoom, &window);
}

/// The widget would put nothing in the place of what is selected.
bool pastesNothing(const QKeyEvent& event) {
    return event.matches(QKeySequence::Paste) && QApplication::clipboard()->text().isEmpty();
}

}  // namespace

TextBoxView::TextBoxView(TextBox& box, FormWindow& window) : box_(box), window_(window), edit_(makeEdit(box, window)) {
    edit_.setFocusPolicy(Qt::NoFocus);
    edit_.setAcceptDrops(false);
    edit_.setTextMargins(sideMargin, 0, sideMargin, 0);
    edit_.setMaxLength(std::numeric_limits<int>::max());
    QObject::connect(&edit_, &QLineEdit::textEdited, &window, [this](const QString& text) { changed(text); });
    // The widget tells what was typed before it tells that caret and selection have moved.
    QObject::connect(&edit_, &QLineEdit::cursorPositionChanged, &window, [this] { mark_ = mark(); });
    QObject::connect(&edit_, &QLineEdit::selectionChanged, &window, [this] {
        mark_ = mark();
        if (window_.focusWidget() == &edit_ && !window_.isPulling())
            box_.AllSelected = edit_.hasSelectedText() && edit_.selectedText().size() == edit_.text().size();
    });
    offerSearches();
}

/// The first in a button of the field, each in its context menu.
void TextBoxView::offerSearches() {
    const std::string* last = nullptr;
    for (const KeyHint& search : box_.Searches) {
        if (last && *last == search.does) continue;
        last = &search.does;
        const QString key = QString::fromStdString(keyName(search.stroke));
        const QString does = QString::fromStdString(search.does);
        auto* const action = new QAction(QIcon(new Glass(edit_)), does + "\t" + key, &edit_);
        action->setToolTip(does + " (" + key + ")");
        action->setIconVisibleInMenu(false);
        QObject::connect(
            action, &QAction::triggered, &window_, [this, stroke = search.stroke] { sendKey(stroke); },
            Qt::QueuedConnection);
        if (&search == &box_.Searches.front())
            edit_.addAction(action, QLineEdit::TrailingPosition);
        else
            edit_.QWidget::addAction(action);
    }
}

void TextBoxView::sendKey(KeyStroke stroke) {
    window_.hand([this] { window_.form().focus(box_); });
    if (window_.form().activeControl() == &box_) hands::strike(window_, stroke);
}

bool TextBoxView::stretches() const { return isLong(box_); }

bool TextBoxView::wants(const QKeyEvent& event) {
    const KeyStroke stroke = strokeOf(event);
    if ((stroke.shift & shift::Alt) || pastesNothing(event)) return false;
    bool accepted = true;
    if (stroke.code == key::Backspace) window_.hand([&] { accepted = window_.form().accepts(key::Backspace); });
    return accepted;
}

TextBoxView::Mark TextBoxView::mark() const {
    return {edit_.cursorPosition(), edit_.selectionStart(), edit_.selectionLength()};
}

void TextBoxView::restore(const Mark& mark) {
    const bool selects = mark.start >= 0 && mark.start + mark.length <= edit_.text().size();
    if (!selects) return edit_.setCursorPosition(mark.caret);
    const bool backwards = mark.caret == mark.start;
    edit_.setSelection(backwards ? mark.start + mark.length : mark.start, backwards ? -mark.length : mark.length);
}

/// What was inserted lies between what old and new text have in common at both ends.
void TextBoxView::changed(const QString& text) {
    const std::u32string before = QString::fromStdString(box_.Text).toStdU32String();
    const std::u32string after = text.toStdU32String();
    const auto shorter = std::min(before.size(), after.size());
    const auto head = static_cast<std::size_t>(
        std::mismatch(before.begin(), before.begin() + static_cast<std::ptrdiff_t>(shorter), after.begin()).first -
        before.begin());
    std::size_t tail = 0;
    while (tail < shorter - head && before[before.size() - 1 - tail] == after[after.size() - 1 - tail]) ++tail;
    const std::u32string inserted = after.substr(head, after.size() - head - tail);
    const std::u32string rest = after.substr(after.size() - tail);

    const Mark untouched = mark_;
    Mark wanted{.caret = edit_.cursorPosition()};
    window_.hand([&] {
        const std::size_t limit = box_.MaxLength > 0 ? static_cast<std::size_t>(box_.MaxLength) : after.size();
        const std::u32string start = after.substr(0, head);
        const std::u32string taken = accepted(text::oneLine(inserted), limit - std::min(limit, head + tail));
        if (taken.empty() && !inserted.empty()) {
            wanted = untouched;
            return;
        }
        if (taken != inserted) wanted.caret = static_cast<int>(QString::fromStdU32String(start + taken).size());
        window_.form().edit(box_, QString::fromStdU32String(start + taken + rest).toStdString());
    });
    if (edit_.text() != text) restore(wanted);
}

std::u32string TextBoxView::accepted(const std::u32string& inserted, std::size_t room) {
    std::u32string taken;
    for (const char32_t character : inserted)
        if (taken.size() < room && window_.form().accepts(character)) taken += character;
    return taken;
}

void TextBoxView::pull() {
    const Qt::Alignment alignment = alignmentOf(box_.TextAlignment);
    if (edit_.alignment() != alignment) edit_.setAlignment(alignment);
    if (edit_.isReadOnly() != box_.Locked) edit_.setReadOnly(box_.Locked);
    pullText();
    pullColors();
}

/// The field with the focus is written on at its end; the others show how they begin.
void TextBoxView::pullText() {
    const QString text = QString::fromStdString(box_.Text);
    const bool active = window_.form().activeControl() == &box_;
    if (edit_.text() != text) {
        const bool atEnd = edit_.cursorPosition() == edit_.text().size();
        const int caret = edit_.cursorPosition();
        edit_.setText(text);
        if (!active || !atEnd) edit_.setCursorPosition(active ? caret : 0);
    }
    if (active != active_) edit_.setCursorPosition(active ? static_cast<int>(text.size()) : 0);
    active_ = active;
    if (box_.AllSelected && active && edit_.selectedText() != text) edit_.selectAll();
}

void TextBoxView::pullColors() {
    const Colors wanted{box_.BackColor, box_.Locked, box_.isEnabled(), QApplication::palette().cacheKey()};
    if (colors_ == wanted) return;
    colors_ = wanted;
    edit_.setPalette(fieldPalette(wanted.back, wanted.locked, wanted.enabled));
}

}  // namespace FendaMaestros::qt
