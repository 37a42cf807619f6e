#include "py_manager.h"

namespace zrc {
namespace pyinfra {

namespace {
py_manager::result_maker g_maker = nullptr;
}

void py_manager::set_result_maker(result_maker maker) { g_maker = maker; }

void py_manager::publish(const HATAttrAny& value) {
    if (g_maker)
        g_maker(value);
}

}  // namespace pyinfra
}  // namespace zrc
