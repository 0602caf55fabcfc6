// Fuzz target: any bytes as the assignment text given to eval. Only the three
// expression exceptions may come out, and the object must evaluate normally
// afterwards, whatever the text stored.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "errors/errors.h"
#include "expression/expression.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const Expression prototype("x + y*pi");
    Expression e = prototype;  // a fresh object per input keeps runs reproducible
    const std::string text(reinterpret_cast<const char*>(data), size);
    try {
        const double v = e.eval(text);
        if (!std::isfinite(v)) {
            std::abort();
        }
    } catch (const ExpressionWrongFormat&) {
    } catch (const ExpressionUnknownVariable&) {
    } catch (const ExpressionBadResult&) {
    }
    if (e.eval("x = 1 y = 2 pi = 3") != 7.0) {
        std::abort();
    }
    return 0;
}
