#include "model/Background.h"

using namespace Qt::StringLiterals;

namespace tillery::background {

QString describe(const std::exception_ptr &error)
{
    try {
        std::rethrow_exception(error);
    } catch (const Failure &failure) {
        return failure.description();
    } catch (const std::exception &other) {
        return QString::fromUtf8(other.what());
    } catch (...) {
        return u"An unknown error occurred."_s;
    }
}

} // namespace tillery::background
