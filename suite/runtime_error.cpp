#include "runtime_error.h"

namespace ovalink {

kitbay::base::Failure BadFileName() { return {52, "Bad file name or number"}; }
kitbay::base::Failure BadFileMode() { return {54, "Bad file mode"}; }

}  // namespace ovalink
