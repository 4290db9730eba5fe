#pragma once

#include <clocale>

namespace tessi {

// Event loops want an application, and widgets one that knows of windows. On the main thread; one at a time.
template <class Application>
class QtApplication {
public:
    QtApplication()
        : m_application(m_argumentCount, m_arguments)
    {
        // The application takes over the user's locale, in which numbers may have a decimal comma.
        std::setlocale(LC_NUMERIC, "C");
    }
    QtApplication(const QtApplication&) = delete;
    QtApplication& operator=(const QtApplication&) = delete;

private:
    int m_argumentCount = 1;
    char m_name[6] = "tessi";
    char* m_arguments[2] = {m_name, nullptr};
    Application m_application;
};

} // namespace tessi
