#include "program.h"

#include <comdef.h>

#include <cstdio>

#include "hosting/activation_context.h"
#include "hosting/apartment.h"

namespace bench {

int RunProgram(void (*measure)(Figures& figures)) {
    try {
        const hosting::Apartment apartment;
        const hosting::ActivationContext context(hosting::ActivationContext::BesideProgram());
        Figures figures;
        measure(figures);
        return figures.ExitCode();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    } catch (const _com_error& error) {
        std::fprintf(stderr, "error 0x%08lX\n", static_cast<unsigned long>(error.Error()));
    }
    return 2;
}

}  // namespace bench
