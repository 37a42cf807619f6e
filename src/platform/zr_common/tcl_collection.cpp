#include "tcl_collection.h"

namespace zrc {
namespace tcltasks {

collection_wrapper_base::~collection_wrapper_base() = default;

namespace {
bool g_limitCheck = true;
int g_limit = 500;
}  // namespace

bool collection_result_display_limit_check_enabled() { return g_limitCheck; }
void set_collection_result_display_limit_check_enabled(bool on) { g_limitCheck = on; }
int get_collection_result_display_limit() { return g_limit; }
void set_collection_result_display_limit(int limit) { g_limit = limit; }

}  // namespace tcltasks
}  // namespace zrc
