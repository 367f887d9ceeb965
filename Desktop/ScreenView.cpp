#include "Desktop/ScreenView.h"

#include "Desktop/Keys.h"
#include "MacToolbox/Host/Input.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include <QPainter>

namespace Desktop {

using namespace MacToolbox;

namespace {

constexpr int kRefresh = 16;               // milliseconds
constexpr Int kWidth = 512, kHeight = 322; // of the picture before the first frame
constexpr Int kUnknownKey = 255;
constexpr int kCursorSide = 16;
constexpr QRgb kBlack = 0xFF000000, kWhite = 0xFFFFFFFF;

int asInt(Int n) { return static_cast<int>(n); }

QImage cursorImage(const Cursor& cursor)
{
    QImage image(kCursorSide, kCursorSide, QImage::Format_ARGB32);
    for (int y = 0; y < kCursorSide; ++y)
        for (int x = 0; x < kCursorSide; ++x) {
            const auto at = static_cast<std::size_t>(y * 2 + x / 8);
            const int bit = 0x80 >> (x & 7);
            image.setPixel(x, y, (cursor.data[at] & bit) != 0 ? kBlack : (cursor.mask[at] & bit) != 0 ? kWhite : 0);
        }
    return image;
}

} // namespace

ScreenView::ScreenView()
{
    image_ = QImage(kWidth, kHeight, QImage::Format_RGB32);
    image_.fill(Qt::white);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_InputMethodEnabled);
    setAccessibleName("The Wainroad");
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setInterval(kRefresh);
    QObject::connect(&timer_, &QTimer::timeout, this, [this] { refresh(); });
}

// ---- The picture

QSize ScreenView::sizeFor(Int scale) const
{
    const double ratio = devicePixelRatioF();
    const double pixels = std::max(1.0, std::round(static_cast<double>(scale) * ratio)); // device pixels a screen pixel
    return {static_cast<int>(std::ceil(image_.width() * pixels / ratio)),
        static_cast<int>(std::ceil(image_.height() * pixels / ratio))};
}

QSize ScreenView::sizeHint() const { return sizeFor(2); }

QSize ScreenView::deviceSize() const
{
    const double ratio = devicePixelRatioF();
    return {
        static_cast<int>(std::floor(width() * ratio + 0.001)), static_cast<int>(std::floor(height() * ratio + 0.001))};
}

QRect ScreenView::deviceTarget() const
{
    const QSize room = deviceSize();
    QSize size = image_.size();
    if (const int factor = std::min(room.width() / size.width(), room.height() / size.height()); factor >= 1)
        size *= factor;
    else
        size.scale(room.expandedTo({1, 1}), Qt::KeepAspectRatio);
    return {QPoint((room.width() - size.width()) / 2, (room.height() - size.height()) / 2), size};
}

bool ScreenView::refresh()
{
    const FramePtr frame = Screen::shared().snapshot();
    if (!frame || frame == shown_)
        return false;
    if (frame->width < 1 || frame->height < 1 || I(frame->pixels.size()) < frame->width * frame->height)
        return false; // nothing to show: the picture stays
    const bool sameSize = shown_ && shown_->width == frame->width && shown_->height == frame->height;
    Int first = 0, last = frame->height - 1;
    if (sameSize) {
        const auto rowEquals = [&](Int row) {
            const auto at = static_cast<std::size_t>(row * frame->width);
            return std::memcmp(&shown_->pixels[at], &frame->pixels[at], static_cast<std::size_t>(frame->width)) == 0;
        };
        while (first <= last && rowEquals(first))
            ++first;
        while (last > first && rowEquals(last))
            --last;
    } else {
        image_ = QImage(asInt(frame->width), asInt(frame->height), QImage::Format_RGB32);
    }
    shown_ = frame;
    if (first > last)
        return false;
    takeRows(first, last);
    return true;
}

void ScreenView::takeRows(Int first, Int last)
{
    const Int width = shown_->width;
    for (Int row = first; row <= last; ++row) {
        const std::uint8_t* const from = &shown_->pixels[static_cast<std::size_t>(row * width)];
        auto* const to = reinterpret_cast<QRgb*>(image_.scanLine(asInt(row)));
        std::transform(from, from + width, to, [](std::uint8_t pixel) { return pixel != 0 ? kBlack : kWhite; });
    }
    const QRect target = deviceTarget();
    const double ratio = devicePixelRatioF(), scale = static_cast<double>(target.height()) / image_.height();
    const double top = (target.top() + static_cast<double>(first) * scale) / ratio;
    const double bottom = (target.top() + static_cast<double>(last + 1) * scale) / ratio;
    update(QRectF(0, top, width, bottom - top).toAlignedRect().adjusted(0, -1, this->width(), 1));
}

void ScreenView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const double ratio = devicePixelRatioF();
    painter.scale(1 / ratio, 1 / ratio); // from here on in device pixels
    const QRect target = deviceTarget();
    const QRect all(QPoint(0, 0), deviceSize() + QSize(1, 1));
    for (const QRect& border : QRegion(all).subtracted(target))
        painter.fillRect(border, Qt::black);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, target.width() < image_.width());
    painter.drawImage(target, image_);
}

void ScreenView::resizeEvent(QResizeEvent*) { applyCursor(); }

void ScreenView::showEvent(QShowEvent*)
{
    refresh();
    timer_.start();
}

void ScreenView::hideEvent(QHideEvent*) { timer_.stop(); }

void ScreenView::setStatus(const QString& text)
{
    setAccessibleDescription(text);
    window()->setAccessibleDescription(text);
}

// ---- The cursor

void ScreenView::setGameCursor(const std::optional<Cursor>& cursor)
{
    cursor_ = cursor;
    applyCursor();
}

void ScreenView::hideCursor(bool hide)
{
    hidden_ = std::max<Int>(0, hidden_ + (hide ? 1 : -1));
    applyCursor();
}

void ScreenView::obscureCursor()
{
    obscured_ = true;
    applyCursor();
}

void ScreenView::applyCursor()
{
    if (hidden_ > 0 || obscured_)
        return setCursor(Qt::BlankCursor);
    if (!cursor_)
        return setCursor(Qt::ArrowCursor);
    const double ratio = devicePixelRatioF();
    const int factor = std::max(1, deviceTarget().width() / image_.width());
    QPixmap pixmap = QPixmap::fromImage(cursorImage(*cursor_).scaled(kCursorSide * factor, kCursorSide * factor));
    pixmap.setDevicePixelRatio(ratio);
    const auto place = [&](Int n) { return static_cast<int>(static_cast<double>(n * factor) / ratio); };
    setCursor(QCursor(pixmap, place(cursor_->hotSpot.h), place(cursor_->hotSpot.v)));
}

// ---- The mouse

Point ScreenView::globalPoint(QPointF place) const
{
    const QRect target = deviceTarget();
    const double ratio = devicePixelRatioF(), scale = static_cast<double>(target.width()) / image_.width();
    const Rect viewport = Screen::shared().sharedViewport();
    const auto pixel = [&](double at, int origin) {
        return static_cast<Int>(std::floor((at * ratio - origin) / scale));
    };
    return {pixel(place.y(), target.top()) + viewport.top, pixel(place.x(), target.left()) + viewport.left};
}

void ScreenView::tellMouse(const QMouseEvent& event)
{
    const Point p = globalPoint(event.position());
    Input::modifiers(macModifiers(event.modifiers()) | capsLock_);
    Input::mouse(p.h, p.v, buttonDown_);
}

void ScreenView::mousePressEvent(QMouseEvent* event)
{
    const QPointF device = event->position() * devicePixelRatioF();
    if (event->button() != Qt::LeftButton || !QRectF(deviceTarget()).contains(device))
        return;
    if (onPress)
        onPress();
    buttonDown_ = true;
    tellMouse(*event);
}

void ScreenView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    buttonDown_ = false;
    tellMouse(*event);
}

void ScreenView::mouseMoveEvent(QMouseEvent* event)
{
    if (obscured_) {
        obscured_ = false;
        applyCursor();
    }
    if (buttonDown_ || isActiveWindow())
        tellMouse(*event);
}

// ---- The keyboard

bool ScreenView::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride)
        event->accept(); // every key comes here first, and none is a shortcut of the host
    return QWidget::event(event);
}

void ScreenView::keyPressEvent(QKeyEvent* event)
{
    const Int modifiers = macModifiers(*event);
    capsLock_ = modifiers & alphaLock;
    if (hostKey && hostKey(*event))
        return;
    const auto character = macChar(*event);
    if (!character) {
        Input::modifiers(modifiers);
        return;
    }
    if (onPress && !event->isAutoRepeat())
        onPress();
    Input::key(*character, macKeyCode(*event), modifiers, true, event->isAutoRepeat());
}

void ScreenView::keyReleaseEvent(QKeyEvent* event)
{
    if (event->isAutoRepeat())
        return; // the key is still held
    const Int modifiers = macModifiers(*event);
    capsLock_ = modifiers & alphaLock;
    Input::key(0, macKeyCode(*event), modifiers, false);
}

void ScreenView::inputMethodEvent(QInputMethodEvent* event)
{
    const auto scalars = event->commitString().normalized(QString::NormalizationForm_C).toUcs4();
    for (const auto scalar : scalars)
        if (const auto character = macChar(static_cast<char32_t>(scalar))) {
            if (onPress)
                onPress();
            Input::key(*character, kUnknownKey, Input::modifiersNow() & ~btnState, true);
        }
    event->accept();
}

QVariant ScreenView::inputMethodQuery(Qt::InputMethodQuery query) const
{
    switch (query) {
    case Qt::ImEnabled: return true;
    case Qt::ImHints: return static_cast<int>(Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
    case Qt::ImCursorRectangle: return QRect(rect().center(), QSize(1, 1));
    default: return {};
    }
}

void ScreenView::releaseAll()
{
    const auto keys = Input::keysDown();
    for (std::size_t code = 0; code < keys.size(); ++code)
        if (keys[code])
            Input::key(0, static_cast<Int>(code), 0, false);
    Input::modifiers(capsLock_);
    if (std::exchange(buttonDown_, false)) {
        const Point p = Input::mouseLocation();
        Input::mouse(p.h, p.v, false);
    }
}

} // namespace Desktop
