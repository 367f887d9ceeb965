#include "Desktop/PanelFilter.h"

#include "MacToolbox/Base/Strings.h"

#include <QDir>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>

namespace Desktop {

using namespace MacToolbox;

namespace {

constexpr std::size_t kLongestName = 63;

/// The host's panels would keep a history in the user's settings: they get a place where nothing can be kept.
void forgetHistory() { QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null/none"); }

} // namespace

bool PanelFilter::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    const auto* const files = qobject_cast<const QFileSystemModel*>(sourceModel());
    if (!files)
        return false;
    const QFileInfo info = files->fileInfo(files->index(row, 0, parent));
    if (info.isDir())
        return true;
    if (!info.isFile() || info.fileName().startsWith("._"))
        return false;
    return !ok || ok(info.filePath().toStdString());
}

bool PanelFilter::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    const auto* const files = qobject_cast<const QFileSystemModel*>(sourceModel());
    const QFileInfo a = files->fileInfo(left), b = files->fileInfo(right);
    if (a.isDir() != b.isDir())
        return a.isDir() == (sortOrder() == Qt::AscendingOrder);
    if (left.column() != 0)
        return QSortFilterProxyModel::lessThan(left, right);
    return QString::localeAwareCompare(a.fileName(), b.fileName()) < 0;
}

FilePanel::FilePanel(QWidget* window, const PanelRequest& request, Done done)
    : QFileDialog(window), accepts_(request.accepts)
{
    forgetHistory();
    QDir().mkpath(QString::fromStdString(request.folder));
    setOption(DontUseNativeDialog);
    setOption(DontUseCustomDirectoryIcons);
    setOption(DontConfirmOverwrite); // it asks itself
    auto* const filter = new PanelFilter;
    filter->setParent(this);
    filter->ok = request.accepts;
    setProxyModel(filter);
    setFileMode(request.saving ? AnyFile : ExistingFile);
    setAcceptMode(request.saving ? AcceptSave : AcceptOpen);
    setViewMode(List);
    setDirectory(QString::fromStdString(request.folder));
    setHistory({});
    const QString prompt = QString::fromStdString(request.prompt);
    setWindowTitle(request.saving ? "Save" : "Open");
    setAccessibleName(prompt.isEmpty() ? windowTitle() : prompt);
    for (const char* const choiceOfTypes : {"fileTypeLabel", "fileTypeCombo"})
        if (auto* const widget = findChild<QWidget*>(choiceOfTypes))
            widget->hide();
    if (request.saving) {
        if (!prompt.isEmpty())
            setLabelText(FileName, prompt);
        if (auto* const field = findChild<QLineEdit*>("fileNameEdit")) {
            field->setText(QString::fromStdString(request.name));
            field->selectAll();
            field->setFocus();
        }
    }
    QObject::connect(this, &QDialog::finished, this, [this, done = std::move(done)](int result) {
        const QStringList files = selectedFiles();
        done(result == QDialog::Accepted && !files.isEmpty() ? std::optional(files.front().toStdString())
                                                             : std::nullopt);
        deleteLater();
    });
}

QString FilePanel::refusal(const QString& name)
{
    if (name.isEmpty())
        return {};
    const auto roman = macRomanStrict(name.normalized(QString::NormalizationForm_C).toStdString());
    if (!roman)
        return "The name has a character that the game cannot write. Letters of Western European languages are fine.";
    if (roman->size() > kLongestName)
        return QString("The name has %1 characters; the game can write at most %2.")
            .arg(roman->size())
            .arg(kLongestName);
    if (name.startsWith("._"))
        return "A name cannot begin with a full stop and an underscore.";
    return {};
}

void FilePanel::accept()
{
    const QStringList files = selectedFiles();
    const QFileInfo info(files.isEmpty() ? QString() : files.front());
    if (acceptMode() != AcceptSave || info.isDir() || info.fileName().isEmpty())
        return QFileDialog::accept();
    QString why = refusal(info.fileName());
    if (why.isEmpty() && info.exists() && accepts_ && !accepts_(info.filePath().toStdString()))
        why = QString("“%1” is a file of another kind. It cannot be replaced.").arg(info.fileName());
    if (!why.isEmpty())
        refuse(why);
    else if (info.exists())
        askToReplace(info.fileName());
    else
        QFileDialog::accept();
}

void FilePanel::refuse(const QString& why)
{
    auto* const box = new QMessageBox(QMessageBox::Information, "Choose another name", why, QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void FilePanel::askToReplace(const QString& name)
{
    auto* const box = new QMessageBox(QMessageBox::Question, "Replace it?",
        QString("“%1” is there already. What it holds now would be lost.").arg(name), QMessageBox::Cancel, this);
    const QPushButton* const replace = box->addButton("&Replace", QMessageBox::AcceptRole);
    box->setDefaultButton(QMessageBox::Cancel);
    box->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(replace, &QPushButton::clicked, this, [this] { QFileDialog::accept(); });
    box->open();
}

} // namespace Desktop
