#include "picture/GuiSession.h"

#include <QGuiApplication>

#include <array>
#include <clocale>
#include <string>

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
        makeApplication();
    }
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
}

} // namespace uvtool
