// Highway's headers call this one function of its run-time library, which we do not link.
#include <cstdlib>

#include <hwy/base.h>

namespace hwy {

HWY_NORETURN void Abort(const char*, int, const char*, ...) { std::abort(); }

}  // namespace hwy
