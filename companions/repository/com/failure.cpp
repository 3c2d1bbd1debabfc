#include "repository/com/failure.h"

#include "ole/error.h"
#include "repository/com/text.h"

namespace repository::com {

void ThrowAsAutomationError(const store::Error& error) {
    const auto number = static_cast<ole::Number>(error.ErrorNumber());
    ole::Throw(ole::ToHresult(number), Wide(error.what()).c_str());
}

void Throw(store::Number number, const std::string& text) {
    ThrowAsAutomationError(store::Error(number, text));
}

}  // namespace repository::com
