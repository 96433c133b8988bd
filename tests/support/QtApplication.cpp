// A Qt application object for the whole test program, made before the first test and destroyed
// after the last (database drivers, widgets and the clipboard need one).
#include <QApplication>
#include <QByteArray>

#include <gtest/gtest.h>

#include <memory>

namespace {

class QtApplicationEnvironment : public ::testing::Environment {
public:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", QByteArrayLiteral("offscreen"));
        if (!QCoreApplication::instance())
            m_app = std::make_unique<QApplication>(m_argc, m_argv);
    }
    void TearDown() override { m_app.reset(); }

private:
    int m_argc = 1;
    char m_name[6] = "tests";
    char *m_argv[2] = {m_name, nullptr};
    std::unique_ptr<QApplication> m_app;
};

[[maybe_unused]] const ::testing::Environment *const environment =
    ::testing::AddGlobalTestEnvironment(new QtApplicationEnvironment);

} // namespace
