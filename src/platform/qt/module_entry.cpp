// The window's module as the program opens it: the application object, and the services on it.
#include <QApplication>
#include <QDesktopServices>
#include <QEventLoop>
#include <QFileInfo>
#include <QFont>
#include <QFontInfo>
#include <QMessageBox>
#include <QUrl>
#include <cstdio>
#include <memory>
#include <utility>

#include <unistd.h>

#include "src/forms/Application.h"
#include "src/platform/qt/appearance.h"
#include "src/platform/qt/background_worker.h"
#include "src/platform/qt/boxes.h"
#include "src/platform/qt/link/window_module.h"
#include "src/platform/qt/preview_worker.h"
#include "src/platform/qt/views/qt_text.h"
#include "src/platform/qt/window_mirror.h"
#include "src/translator/modTranslator.h"

#define VARNEL_MODULE_FUNCTION extern "C" __attribute__((visibility("default")))

namespace
{

class QtWindows final : public WindowModule
{
public:
    QtWindows() : application_(count_, arguments_)
    {
        QApplication::setApplicationName(QStringLiteral("varnel"));
        QApplication::setApplicationDisplayName(QString());
        QApplication::setDesktopFileName(QStringLiteral("varnel"));
        QApplication::setQuitOnLastWindowClosed(false);
        SetUpAppearance(application_);
    }

    ~QtWindows() override
    {
        if (app_)
            app_->objHooks.RunPreview = nullptr;
    }

    void Mirror(Application& app, ImageTransform& preview_operations) override
    {
        app_ = &app;
        previews_ = std::make_unique<PreviewWorker>(preview_operations);
        app.objHooks.RunPreview = [this](MakePreview make, ShowImage show) {
            previews_->Run(std::move(make), std::move(show));
        };
        mirror_ = std::make_unique<WindowMirror>(
            app, [&app](const char* text) { return ToQt(sTranslate(app, text)); });
    }

    void Run() override
    {
        if (FormWindow* window = mirror_ ? mirror_->Window(app_->frmMainMDI) : nullptr)
            window->RunUntilHidden();
    }

    BoxAnswer ShowBox(const std::string& text, const std::string& title, BoxIcon icon,
                      BoxButtons buttons) override
    {
        return ShowMessage(Parent(), text, title, icon, buttons);
    }
    std::size_t ShowChoice(const std::string& text, const std::string& title, BoxIcon icon,
                           const std::vector<ChoiceButton>& buttons) override
    {
        return ShowChoices(Parent(), text, title, icon, buttons);
    }
    std::string PickFile(FilePicker& picker) override { return PickFilePath(Parent(), picker); }
    std::string PickFolder(const std::string& title, const std::string& start_folder) override
    {
        return PickFolderPath(Parent(), title, start_folder);
    }
    std::optional<std::int32_t> PickColour(std::int32_t start) override
    {
        return PickColourValue(Parent(), start);
    }
    std::optional<std::string> PickFont(const std::string& start) override
    {
        return PickFontName(Parent(), start);
    }
    void ShowModal(Form& frm) override
    {
        if (mirror_)
            mirror_->ShowModal(frm);
    }
    void HandleEvents() override { QCoreApplication::processEvents(); }
    void RunInBackground(const std::function<void()>& work) override
    {
        // Within a run, the dispatcher says what a person may do. Otherwise their keys wait, as they would
        // for any other work of the program.
        const bool in_run = app_ && app_->frmMain.lRunsInProgress > 0;
        worker_.Run(work, in_run ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
    }

    std::string MatchingFont(const std::string& name) const override
    {
        return QFontInfo(QFont(ToQt(name))).family().toStdString();
    }
    bool LaunchHelp(const std::string& help_file, std::int32_t topic) override
    {
        QString guide = ToQt(help_file);
        if (!QFileInfo::exists(guide))
            guide =
                QCoreApplication::applicationDirPath() + QStringLiteral("/../share/varnel/Help/Varnel.html");
        if (!QFileInfo::exists(guide))
            return false;
        QUrl url = QUrl::fromLocalFile(QFileInfo(guide).canonicalFilePath());
        if (topic >= 0)
            url.setFragment(QString::number(topic));
        return QDesktopServices::openUrl(url);
    }

private:
    /// The window that asks.
    QWidget* Parent() const
    {
        if (QWidget* window = QApplication::activeModalWidget())
            return window;
        if (QWidget* window = QApplication::activeWindow())
            return window;
        MainWindow* main = mirror_ ? mirror_->Main() : nullptr;
        return main && main->Frame().Widget().isVisible() ? &main->Frame().Widget() : nullptr;
    }

    int count_ = 1;
    char name_[7] = "varnel";
    char* arguments_[2] = {name_, nullptr};
    QApplication application_;
    Application* app_ = nullptr;
    BackgroundWorker worker_;
    std::unique_ptr<PreviewWorker> previews_;
    std::unique_ptr<WindowMirror> mirror_;
};

}  // namespace

// Qt calls abort() when it can't open the display. The program has looked before, but a display can refuse
// for more reasons than it can know; a message and an ordinary end are better than a crash.
static void EndOnFatalMessage(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type == QtDebugMsg || type == QtInfoMsg)
        return;
    std::fprintf(stderr, "%s\n", message.toLocal8Bit().constData());
    if (type != QtFatalMsg)
        return;
    std::fflush(nullptr);
    _exit(0);
}

VARNEL_MODULE_FUNCTION WindowModule* VarnelCreateWindowModule()
{
    qInstallMessageHandler(EndOnFatalMessage);
    return new QtWindows;
}

VARNEL_MODULE_FUNCTION void VarnelDestroyWindowModule(WindowModule* module)
{
    delete module;
}
