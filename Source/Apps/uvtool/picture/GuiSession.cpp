#include "picture/GuiSession.h"

#include <QGuiApplication>
#include <QtGlobal>

#include <array>
#include <clocale>
#include <string>

#ifdef __SANITIZE_ADDRESS__
// The font library keeps its settings until the end of the process, partly out of reach of the leak
// checker.
extern "C" const char* __lsan_default_suppressions() // NOLINT(bugprone-reserved-identifier)
{
    return "leak:libfontconfig";
}
extern "C" const char* __lsan_default_options() // NOLINT(bugprone-reserved-identifier)
{
    return "print_suppressions=0";
}
#endif

namespace uvtool
{
namespace
{

/// Qt takes over the user's locale; a decimal comma would break every reader of numbers.
class KeptLocale
{
public:
    KeptLocale() : before_(std::setlocale(LC_ALL, nullptr)) {}
    ~KeptLocale() { std::setlocale(LC_ALL, before_.c_str()); }
    KeptLocale(const KeptLocale&) = delete;
    KeptLocale& operator=(const KeptLocale&) = delete;

private:
    std::string before_;
};

/// The platform complains about an environment that nothing here makes use of.
class SilentQt
{
public:
    SilentQt() : before_(qInstallMessageHandler(passOver)) {}
    ~SilentQt() { qInstallMessageHandler(before_); }
    SilentQt(const SilentQt&) = delete;
    SilentQt& operator=(const SilentQt&) = delete;

private:
    static void passOver(QtMsgType, const QMessageLogContext&, const QString&) {}

    QtMessageHandler before_;
};

/// Qt keeps references to the arguments as long as it lives.
void makeApplication()
{
    static std::string name = "uvtool";
    static std::string option = "-platform";
    static std::string platform = "offscreen";
    static std::array<char*, 4> arguments{name.data(), option.data(), platform.data(), nullptr};
    static int count = 3;
    // Never destroyed: at the end of the process other static objects of Qt may be gone already.
    static const QGuiApplication* const application = new QGuiApplication(count, arguments.data());
    static_cast<void>(application);
}

} // namespace

bool startGuiSession()
{
    if (QCoreApplication::instance() == nullptr) {
        const KeptLocale locale;
        const SilentQt silence;
        makeApplication();
    }
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
}

} // namespace uvtool
