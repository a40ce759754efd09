// Gives the tests of the window a Qt application without a screen.
#include <gtest/gtest.h>

#include <QApplication>
#include <memory>

#include "src/platform/qt/appearance.h"

namespace
{

class QtEnvironment final : public testing::Environment
{
public:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        application_ = std::make_unique<QApplication>(count_, arguments_);
        QApplication::setQuitOnLastWindowClosed(false);
        QApplication::setStyle(QStringLiteral("Fusion"));
        QApplication::setPalette(PlainPalette(false));
    }
    void TearDown() override { application_.reset(); }

private:
    int count_ = 1;
    char name_[6] = "tests";
    char* arguments_[2] = {name_, nullptr};
    std::unique_ptr<QApplication> application_;
};

const testing::Environment* const kEnvironment =
    testing::AddGlobalTestEnvironment(new QtEnvironment);  // NOLINT: owned by the framework

}  // namespace
