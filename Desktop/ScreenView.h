#pragma once

#include "MacToolbox/Base/Platform.h"
#include "MacToolbox/QuickDraw/Screen.h"

#include <functional>
#include <optional>

#include <QImage>
#include <QTimer>
#include <QWidget>

namespace Desktop {

using MacToolbox::Int;

/// Shows the published frame, enlarged by the largest whole factor of device pixels that fits, with a black border
/// around it; and hands mouse and keys to the Toolbox. Main thread.
class ScreenView final : public QWidget {
public:
    ScreenView();

    /// A Ctrl key, or F10 or F11, that belongs to the host; answers true if it took it.
    std::function<bool(const QKeyEvent&)> hostKey;
    /// Called before each press of a key or the button.
    std::function<void()> onPress;

    /// The size, in the host's units, at which the picture is enlarged `scale` times.
    QSize sizeFor(Int scale) const;
    QSize sizeHint() const override;

    /// Takes the published frame if it is another. @return True if something is to be painted.
    bool refresh();
    /// The cursor over the picture; nothing is the arrow.
    void setGameCursor(const std::optional<MacToolbox::Cursor>& cursor);
    /// Counted: as many shows as hides bring it back.
    void hideCursor(bool hide);
    void obscureCursor();
    /// The window is no longer in front: lets go of every key, and of the button.
    void releaseAll();
    /// What is going on, in one line, for those who hear the screen.
    void setStatus(const QString& text);

    /// Global coordinates of a place in the view.
    MacToolbox::Point globalPoint(QPointF place) const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool) override { return false; } // Tab is the game's
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QSize deviceSize() const;
    QRect deviceTarget() const; // where the picture stands, in device pixels
    void takeRows(Int first, Int last);
    void tellMouse(const QMouseEvent& event);
    void applyCursor();

    QTimer timer_;
    MacToolbox::FramePtr shown_; // the frame that `image_` holds
    QImage image_;
    bool buttonDown_ = false;
    Int capsLock_ = 0; // as of the last key event
    std::optional<MacToolbox::Cursor> cursor_;
    Int hidden_ = 0;
    bool obscured_ = false;
};

} // namespace Desktop
