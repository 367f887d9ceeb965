#pragma once

#include "MacToolbox/Base/Platform.h"

#include <functional>
#include <optional>
#include <string>

#include <QFileDialog>
#include <QSortFilterProxyModel>

namespace Desktop {

/// Leaves out of a file panel the files that the game does not want. Folders always show.
class PanelFilter final : public QSortFilterProxyModel {
public:
    std::function<bool(const std::string&)> ok; ///< whether the regular file of that path shows; empty shows all

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;
};

/// An open or save panel, modal to the window. It starts in the request's folder and remembers nothing. It asks before
/// a file is replaced, and replaces none that the request does not accept.
class FilePanel final : public QFileDialog {
public:
    using Done = std::function<void(std::optional<std::string>)>;

    /// Deletes itself at its end, after `done` was called with the path, or nothing.
    FilePanel(QWidget* window, const MacToolbox::PanelRequest& request, Done done);

    /// Why a file cannot have that name; empty if it can. A name is at most 63 characters of Mac OS Roman.
    static QString refusal(const QString& name);

protected:
    void accept() override;

private:
    void refuse(const QString& why);
    void askToReplace(const QString& name);

    std::function<bool(const std::string&)> accepts_; // the files that may be chosen or replaced; empty: all
};

} // namespace Desktop
