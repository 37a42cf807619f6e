// The host's Python manager as the board library sees it: the module that
// the library's Python types are added to, and the result of the call in
// progress. Both are plain slots; the Python layer fills them when it loads,
// and installs the function that turns a property value into a Python value.
#ifndef ZR_COMMON_PY_MANAGER_H
#define ZR_COMMON_PY_MANAGER_H

#include "HATAttrAny.h"
#include "py_object.h"

namespace zrc {
namespace pyinfra {

class py_manager {
public:
    // The module the library's Python types are added to; null until the Python layer loads.
    static inline PyObject* py_tessaraModule = nullptr;
    // The result of the call in progress: a new reference, taken over by whoever returns it to Python.
    static inline PyObject* py_result = nullptr;

    typedef void (*result_maker)(const HATAttrAny& value);
    static void set_result_maker(result_maker maker);
    // Builds the Python value of a property read into py_result; does nothing
    // while no Python layer is loaded.
    static void publish(const HATAttrAny& value);
};

}  // namespace pyinfra
}  // namespace zrc

// The host's own code reaches the manager under this name; both are one class.
namespace hdi {
namespace pyinfra {
using zrc::pyinfra::py_manager;
}
}  // namespace hdi

#endif
