#include "HCPProperty.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <typeindex>

#include "ComMsgMgr.h"
#include "HTCErrors.h"
#include "HUTConvert.h"
#include "py_manager.h"

namespace HCPProperty {

namespace detail {
poi::~poi() = default;
}

Setter::~Setter() = default;

namespace {

bool sameNoCase(const std::string& a, const std::string& b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

bool lessNoCase(const std::string& a, const std::string& b) {
    std::size_t n = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < n; ++i) {
        int x = std::tolower(static_cast<unsigned char>(a[i]));
        int y = std::tolower(static_cast<unsigned char>(b[i]));
        if (x != y)
            return x < y;
    }
    return a.size() < b.size() || (a.size() == b.size() && a < b);
}

struct Service {
    std::map<std::type_index, ObjectInfo> infos;
    std::vector<std::unique_ptr<Setter>> done;
    std::vector<std::unique_ptr<Setter>> undone;
    bool pyMode = false;
};

// Never destroyed: objects deleted by static destructors may still ask.
Service& service() {
    static Service* s = new Service;
    return *s;
}

ObjectInfo infoOf(const zrc::tcltasks::tclany& object) {
    ObjectInfo info = getObjectInfo(object.type());
    if (!info)
        throw HTCErrors::type_error("no properties are registered for objects of type '" +
                                    zrc::tcltasks::detail::demangled(object.type()) + "'");
    return info;
}

void warnOf(const Spec& spec) {
    const std::string& advisory = spec.getAttrSpec().advisoryText;
    if (advisory.empty())
        return;
    ComMsgMgr::sendMessage(ComMsgMgrInstance(1, __FILE__, __LINE__, "common", ComMsgMgr::MSG_WARNING, "%s",
                                             {"Property '" + spec.getName() + "' is deprecated. " + advisory}));
}

void dropAll(std::vector<std::unique_ptr<Setter>>& setters) {
    for (auto& s : setters)
        s->release();
    setters.clear();
}

}  // namespace

// ---- ObjectInfo ----

// A deleted spec leaves its place behind: a spec made again under that name
// takes it, so that a replaced property keeps its position in a listing.
struct ObjectInfo::Impl {
    struct Slot {
        std::string name;
        std::unique_ptr<Spec> spec;  // null once deleted
    };
    std::unique_ptr<detail::poi> objectInterface;
    std::vector<Slot> slots;
    bool sort = true;

    std::vector<Slot>::iterator find(const std::string& name) {
        return std::find_if(slots.begin(), slots.end(), [&](const Slot& s) { return sameNoCase(s.name, name); });
    }
};

ObjectInfo::ObjectInfo(detail::poi* objectInterface) : m_impl(std::make_shared<Impl>()) {
    m_impl->objectInterface.reset(objectInterface);
}

detail::poi* ObjectInfo::getPoi() const { return m_impl ? m_impl->objectInterface.get() : nullptr; }

Spec& ObjectInfo::createSpec(const std::string& name) {
    auto it = m_impl->find(name);
    if (it == m_impl->slots.end()) {
        m_impl->slots.push_back(Impl::Slot{name, nullptr});
        it = m_impl->slots.end() - 1;
    }
    it->name = name;
    it->spec.reset(new Spec(name));
    return *it->spec;
}

bool ObjectInfo::deleteSpec(const std::string& name) {
    auto it = m_impl->find(name);
    if (it == m_impl->slots.end() || !it->spec)
        return false;
    it->spec.reset();
    return true;
}

void ObjectInfo::setSortProperties(bool sort) { m_impl->sort = sort; }
bool ObjectInfo::getSortProperties() const { return m_impl->sort; }

Spec* ObjectInfo::findSpec(const std::string& name) const {
    if (name == DEFAULT_SPEC)
        return nullptr;
    auto it = m_impl->find(name);
    return it == m_impl->slots.end() ? nullptr : it->spec.get();
}

Spec* ObjectInfo::getDefaultSpec() const {
    for (const auto& s : m_impl->slots)
        if (s.spec && s.name == DEFAULT_SPEC)
            return s.spec.get();
    return nullptr;
}

std::vector<Spec*> ObjectInfo::getSpecs() const {
    std::vector<Spec*> out;
    for (const auto& s : m_impl->slots)
        if (s.spec)
            out.push_back(s.spec.get());
    return out;
}

// ---- Registry ----

ObjectInfo getObjectInfo(const std::type_info& type) {
    auto it = service().infos.find(type);
    return it == service().infos.end() ? ObjectInfo() : it->second;
}

void detail::registerObjectInfo(const ObjectInfo& info) {
    if (info)
        service().infos[info.getPoi()->native_type()] = info;
}

void Types::detail::castError(const std::type_info& held, const std::type_info& wanted) {
    throw HTCErrors::type_error("an object of type '" + zrc::tcltasks::detail::demangled(held) + "' where '" +
                                zrc::tcltasks::detail::demangled(wanted) + "' was expected");
}

bool LaunchMode::isPyMode() { return service().pyMode; }
void LaunchMode::setPyMode(bool on) { service().pyMode = on; }

// ---- Results ----

Tcl_Obj* Utils::newTclObj(const HATAttrAny& value) {
    if (const bool* b = value.get<bool>())
        return Tcl_NewBooleanObj(*b);
    if (const int* i = value.get<int>())
        return Tcl_NewIntObj(*i);
    if (const HATStringList* list = value.get<HATStringList>()) {
        // Elements joined by blanks as they stand, and all of them: a script
        // reads the result as a list, and elements that are lists themselves
        // ("{key value}") keep their shape.
        std::string text;
        for (std::size_t i = 0; i < list->size(); ++i) {
            if (i)
                text += ' ';
            text += list->items()[i];
        }
        return Tcl_NewStringObj(text.data(), static_cast<int>(text.size()));
    }
    std::string text = value.toString();
    return Tcl_NewStringObj(text.data(), static_cast<int>(text.size()));
}

void Utils::setAttrResult(Tcl_Interp* interp, const HATAttrAny& value) {
    if (interp)
        Tcl_SetObjResult(interp, newTclObj(value));
    else if (LaunchMode::isPyMode())
        zrc::pyinfra::py_manager::publish(value);
}

// ---- Reading and listing ----

bool getProperty(Tcl_Interp* interp, const zrc::tcltasks::tclany& object, const std::string& name,
                 HATAttrAny& result, bool warnAdvisory) {
    ObjectInfo info = infoOf(object);
    if (Spec* spec = info.findSpec(name)) {
        if (!spec->getGetFcn())
            return false;
        if (warnAdvisory)
            warnOf(*spec);
        return spec->getGetFcn()(interp, object, spec->getName(), result);
    }
    Spec* dynamic = info.getDefaultSpec();
    if (!dynamic || !dynamic->getGetFcn())
        return false;
    return dynamic->getGetFcn()(interp, object, name, result);
}

std::vector<ListedProperty> listProperties(const zrc::tcltasks::tclany& object) {
    ObjectInfo info = infoOf(object);
    std::vector<ListedProperty> out;
    for (Spec* spec : info.getSpecs()) {
        if (spec->getName() == ObjectInfo::DEFAULT_SPEC || !spec->getAttrSpec().isVisible())
            continue;
        ListedProperty p;
        p.name = spec->getName();
        p.spec = spec->getAttrSpec();
        out.push_back(p);
    }
    Spec* dynamic = info.getDefaultSpec();
    if (dynamic && dynamic->getGetDefaultFcn()) {
        HSTVector<Types::PNameAndProp> names;
        dynamic->getGetDefaultFcn()(object, names);
        for (const Types::PNameAndProp& entry : names) {
            ListedProperty p;
            p.name = entry.first;
            p.dynamic = true;
            p.value = entry.second;
            const HATAttrSpec* own = nullptr;
            if (dynamic->getGetDefaultAttrSpecFcn())
                own = dynamic->getGetDefaultAttrSpecFcn()(object, entry.first);
            if (own) {
                p.spec = *own;
            } else {
                p.spec.setAttrType(entry.second.getType());
                p.spec.setReadOnly(true);
            }
            out.push_back(p);
        }
    }
    if (info.getSortProperties())
        std::stable_sort(out.begin(), out.end(),
                         [](const ListedProperty& a, const ListedProperty& b) { return lessNoCase(a.name, b.name); });
    return out;
}

// ---- Writing, undo and redo ----

int setProperty(Tcl_Interp* interp, const Setter::Objects& objects, const std::string& name, const HATAttr& value) {
    if (objects.empty())
        throw HTCErrors::error("no objects to set property '" + name + "' on");
    const std::type_info& type = objects[0].type();
    for (const zrc::tcltasks::tclany& o : objects.items())
        if (o.type() != type)
            throw HTCErrors::type_error("property '" + name + "' can only be set on objects of one type at a time");
    ObjectInfo info = infoOf(objects[0]);
    Spec* spec = info.findSpec(name);
    if (!spec)
        throw HTCErrors::error("no property '" + name + "' to set on objects of type '" +
                               zrc::tcltasks::detail::demangled(type) + "'");
    if (spec->getAttrSpec().isReadOnly() || !spec->getSetterFcn())
        throw HTCErrors::error("property '" + spec->getName() + "' is read-only");
    if (spec->getAttrSpec().getAttrType() == HATAttrTypes::ATTR_BOOL) {
        bool ignored = false;
        if (!HUTConvert::stringToBoolean(value.getCharStringVal(), ignored, false))
            throw HTCErrors::error("property '" + spec->getName() + "' takes a boolean (true, false, 1, 0), not '" +
                                   value.getCharStringVal() + "'");
    }
    std::unique_ptr<Setter> setter = spec->getSetterFcn()();
    if (!setter)
        throw HTCErrors::error("property '" + spec->getName() + "' is read-only");
    int rc = setter->set(interp, objects, spec->getName(), value);
    if (rc == 0) {
        Service& s = service();
        dropAll(s.undone);
        s.done.push_back(std::move(setter));
    }
    return rc;
}

bool undo() {
    Service& s = service();
    if (s.done.empty())
        return false;
    std::unique_ptr<Setter> setter = std::move(s.done.back());
    s.done.pop_back();
    setter->undo();
    s.undone.push_back(std::move(setter));
    return true;
}

bool redo() {
    Service& s = service();
    if (s.undone.empty())
        return false;
    std::unique_ptr<Setter> setter = std::move(s.undone.back());
    s.undone.pop_back();
    setter->redo();
    s.done.push_back(std::move(setter));
    return true;
}

bool canUndo() { return !service().done.empty(); }
bool canRedo() { return !service().undone.empty(); }

void clearHistory() {
    dropAll(service().done);
    dropAll(service().undone);
}

}  // namespace HCPProperty
