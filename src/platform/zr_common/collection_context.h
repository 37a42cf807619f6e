// What a collection knows besides its elements: a text of its own that can
// stand for it in place of the elements (a command's summary, say).
#ifndef ZR_COMMON_COLLECTION_CONTEXT_H
#define ZR_COMMON_COLLECTION_CONTEXT_H

#include <string>

namespace zrc {
namespace tcltasks {

class collection_context {
public:
    bool get_use_collection_context_string_rep() const { return m_useStringRep; }
    const std::string& get_string_rep() const { return m_stringRep; }
    // Makes text the collection's string rep.
    void set_string_rep(const std::string& text) {
        m_stringRep = text;
        m_useStringRep = true;
    }
    void clear_string_rep() {
        m_stringRep.clear();
        m_useStringRep = false;
    }

private:
    std::string m_stringRep;
    bool m_useStringRep = false;
};

// How many elements a collection's string rep shows before " ...".
bool collection_result_display_limit_check_enabled();
void set_collection_result_display_limit_check_enabled(bool on);
int get_collection_result_display_limit();
void set_collection_result_display_limit(int limit);

}  // namespace tcltasks
}  // namespace zrc

#endif
