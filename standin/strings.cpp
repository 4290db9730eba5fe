#include "Common/strings.h"

namespace ZP {

QString sToQs(const std::string& text)
{
    return QString::fromStdString(text);
}

} // namespace ZP
