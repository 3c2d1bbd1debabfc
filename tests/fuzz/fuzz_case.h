#pragma once

#include "fuzz/lattice.h"
#include "fuzz/members.h"

#include <string>
#include <vector>

namespace fuzz {

/// How a value is passed.
enum class Form {
    value,           ///< as it is
    reference,       ///< a reference of its own type
    variable,        ///< a reference to a variant
    variableToThat,  ///< a reference to a variant that is a reference
};

/// One call, as indices into the members and the lattice.
struct Case {
    struct Passed {
        std::size_t value = 0;
        Form form = Form::value;
    };

    const Member* member = nullptr;
    WORD kind = DISPATCH_METHOD;
    std::vector<Passed> arguments;
    /// Dispatch ids of the last arguments, in the order of `arguments`.
    std::vector<DISPID> named;
    bool wantsResult = true;
    bool wantsException = true;
    bool wantsBadArgument = true;
    bool wrongInterface = false;  ///< an interface id that must be refused

    [[nodiscard]] std::string Text(const std::vector<NamedValue>& lattice) const;
};

/// Calls that try one thing at a time for a member.
[[nodiscard]] std::vector<Case> SystematicCases(const Member& member,
                                                const std::vector<NamedValue>& lattice);
/// Calls of any member with anything; the same for the same seed.
[[nodiscard]] std::vector<Case> RandomCases(const std::vector<Member>& members,
                                            const std::vector<NamedValue>& lattice,
                                            std::size_t count, unsigned seed);

/// Makes the call.
HRESULT Run(const Case& which, IDispatch& object, const std::vector<NamedValue>& lattice);

/// Asks for names, type information and members in ways that no member is reached.
void TryPlumbing(IDispatch& object);

}  // namespace fuzz
