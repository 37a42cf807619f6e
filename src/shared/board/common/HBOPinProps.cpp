#include "HBOCase.h"
#include "HBOPinProps.h"

#include <cstdio>
#include <mutex>
#include <set>
#include <sstream>
#include <unordered_set>

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/predicate.hpp>

#include "HBOBoardComponent.h"
#include "HBOIndexText.h"
#include "HBONativeCacheHook.h"

namespace {

std::string lower(const std::string& s) {
    return HBOCase::lower(s);
}

const char* const kDiffTerm = "diff_term";
const char* const kDqsBias = "dqs_bias";
const char* const kDrive = "drive";
const char* const kEqualization = "equalization";
const char* const kIOStandard = "iostandard";
const char* const kIbufLowPwr = "ibuf_low_pwr";
const char* const kOdt = "odt";
const char* const kOutputImpedance = "output_impedance";
const char* const kPreEmphasis = "pre_emphasis";
const char* const kSlew = "slew";

// Interface names of the pins' single entries, one copy each for the process:
// thousands of pins share a few dozen names. Bounded, so that a host reading
// board after board of made-up names does not grow without end: null once full
// for a name not yet held.
struct SharedNames {
    std::mutex lock;
    std::unordered_set<std::string> names;
};

SharedNames& sharedNames() {
    static auto* shared = new SharedNames();
    return *shared;
}

const std::string* internedName(const std::string& name) {
    // The pins of one port map come in a row with one interface name: the
    // last name found on this thread answers them without the lock. Shared
    // names are never dropped, so the pointer stays good.
    thread_local const std::string* t_last = nullptr;
    if (t_last && *t_last == name)
        return t_last;
    SharedNames& shared = sharedNames();
    std::lock_guard<std::mutex> hold(shared.lock);
    auto it = shared.names.find(name);
    if (it != shared.names.end())
        return t_last = &*it;
    if (shared.names.size() >= HBOPinProps::kMaxSharedInterfaceNames)
        return nullptr;
    return t_last = &*shared.names.insert(name).first;
}

}  // namespace

HBOPinProps::HBOPinProps() = default;

HBOPinProps::HBOPinProps(const HBOPinProps& other) = default;

HBOPinProps::HBOPinProps(const HBOPinProps& other, HBOBoardComponent* owner, HBOModelPort* ownerPort)
    : HBOPinProps(other) {
    m_owner = owner;
    m_ownerPort = ownerPort;
}

// Assigns member by member, so that references into this pin stay good; an
// interface port map that was handed out keeps its place and takes the entry.
HBOPinProps& HBOPinProps::operator=(const HBOPinProps& other) {
    if (this == &other)
        return *this;
    const bool handedOut = madeIntfPortMap() != nullptr;
    beforeKeyChange(&other.m_name, other.m_owner);
    m_pinIndex = other.m_pinIndex;
    for (int i = 0; i < kInlineProps; ++i) {
        m_propSlot[i] = other.m_propSlot[i];
        m_propValue[i] = other.m_propValue[i];
    }
    m_owner = other.m_owner;
    m_ownerPort = other.m_ownerPort;
    m_name = other.m_name;
    m_loc = other.m_loc;
    m_extras = other.m_extras;
    m_hasIntfPort = other.m_hasIntfPort;
    m_intf = other.m_intf;
    m_intfPortIndex = other.m_intfPortIndex;
    if (handedOut || madeIntfPortMap())
        intfPortMap();
    return *this;
}

HBOPinProps::~HBOPinProps() {
    HBONativeCacheHook::remove(this);
}

bool HBOPinProps::getPinIndex(int& out) const {
    out = m_pinIndex;
    return true;
}

bool HBOPinProps::setPinIndex(int index) {
    m_pinIndex = index;
    return true;
}

void HBOPinProps::beforeKeyChange(const std::string* newName, const HBOBoardComponent* newOwner) {
    if (m_listed.on && m_owner && ((newName && *newName != m_name) || newOwner != m_owner))
        m_owner->pinMap();
}

bool HBOPinProps::setOwner(HBOBoardComponent* owner) {
    beforeKeyChange(nullptr, owner);
    m_owner = owner;
    return true;
}

bool HBOPinProps::getOwnerPort(HBOModelPort*& out) const {
    out = m_ownerPort;
    return m_ownerPort != nullptr;
}

bool HBOPinProps::setOwnerPort(HBOModelPort* port) {
    m_ownerPort = port;
    return true;
}

bool HBOPinProps::getName(std::string& out) const {
    out = m_name;
    return true;
}

bool HBOPinProps::setName(std::string name) {
    beforeKeyChange(&name, m_owner);
    m_name = std::move(name);
    return true;
}

bool HBOPinProps::getPinLoc(std::string& out) const {
    out = m_loc;
    return true;
}

bool HBOPinProps::setPinLoc(std::string loc) {
    m_loc = std::move(loc);
    return true;
}

namespace {

// Place of a lower-case name in the known list, or -1.
int knownPropPlace(const std::string& lowerName) {
    const std::vector<std::string>& names = HBOPinProps::getPortPropNames();
    for (std::size_t i = 0; i < names.size(); ++i)
        if (names[i].size() == lowerName.size() && names[i] == lowerName)
            return static_cast<int>(i);
    return -1;
}

}  // namespace

const std::string* HBOPinProps::findPortProp(const std::string& lowerName) const {
    const int place = knownPropPlace(lowerName);
    if (place >= 0)
        for (int i = 0; i < kInlineProps; ++i)
            if (m_propSlot[i] == place + 1)
                return &m_propValue[i];
    if (!m_extras.peek())
        return nullptr;
    const std::map<std::string, std::string>& others = m_extras.peek()->otherProps;
    auto it = others.find(lowerName);
    return it == others.end() ? nullptr : &it->second;
}

std::string& HBOPinProps::portPropEntry(const std::string& lowerName) const {
    const int place = knownPropPlace(lowerName);
    if (place >= 0) {
        int free = -1;
        for (int i = 0; i < kInlineProps; ++i) {
            if (m_propSlot[i] == place + 1)
                return m_propValue[i];
            if (m_propSlot[i] == 0 && free < 0)
                free = i;
        }
        // Not inline: it may still have gone to the map when the slots were full.
        if (m_extras.peek()) {
            std::map<std::string, std::string>& others = m_extras.get().otherProps;
            auto it = others.find(lowerName);
            if (it != others.end())
                return it->second;
        }
        if (free >= 0) {
            m_propSlot[free] = static_cast<unsigned char>(place + 1);
            return m_propValue[free];
        }
    }
    return m_extras.get().otherProps[lowerName];
}

template <typename Fn>
void HBOPinProps::forEachPortProp(Fn fn) const {
    const std::vector<std::string>& names = getPortPropNames();
    for (int i = 0; i < kInlineProps; ++i)
        if (m_propSlot[i])
            fn(names[m_propSlot[i] - 1], m_propValue[i]);
    if (const Extras* extras = m_extras.peek())
        for (const auto& kv : extras->otherProps)
            fn(kv.first, kv.second);
}

const std::string& HBOPinProps::getPortProp(const std::string& name) const {
    // A read creates the entry on purpose: scripts see every property asked for.
    return portPropEntry(lower(name));
}

bool HBOPinProps::setPortProp(const std::string& name, const std::string& value) {
    portPropEntry(lower(name)) = value;
    return true;
}

std::map<std::string, std::string> HBOPinProps::getPortProps() const {
    std::map<std::string, std::string> out;
    forEachPortProp([&out](const std::string& name, const std::string& value) { out.emplace(name, value); });
    return out;
}

const std::vector<std::string>& HBOPinProps::getPortPropNames() {
    static const std::vector<std::string> names = {
        "diff_term", "diff_term_adv", "dqs_bias", "drive", "equalization", "ibuf_low_pwr",
        "iostandard", "lvds_pre_emphasis", "odt", "output_impedance", "pre_emphasis", "pull_type",
        "slew", "voh", "pcb_min_delay", "pcb_max_delay"};
    return names;
}

#define HBO_PIN_NAMED_PROP(Getter, Setter, key)                                \
    const std::string& HBOPinProps::Getter() const { return getPortProp(key); } \
    bool HBOPinProps::Getter(std::string& out) const {                         \
        out = getPortProp(key);                                                \
        return true;                                                           \
    }                                                                          \
    bool HBOPinProps::Setter(const std::string& value) { return setPortProp(key, value); }

HBO_PIN_NAMED_PROP(getPinDiffTerm, setPinDiffTerm, kDiffTerm)
HBO_PIN_NAMED_PROP(getPinDqsBias, setPinDqsBias, kDqsBias)
HBO_PIN_NAMED_PROP(getPinDrive, setPinDrive, kDrive)
HBO_PIN_NAMED_PROP(getPinEqualization, setPinEqualization, kEqualization)
HBO_PIN_NAMED_PROP(getPinIOStandard, setPinIOStandard, kIOStandard)
HBO_PIN_NAMED_PROP(getPinIbufLowPwr, setPinIbufLowPwr, kIbufLowPwr)
HBO_PIN_NAMED_PROP(getPinOdt, setPinOdt, kOdt)
HBO_PIN_NAMED_PROP(getPinOutputImpedance, setPinOutputImpedance, kOutputImpedance)
HBO_PIN_NAMED_PROP(getPinPreEmphasis, setPinPreEmphasis, kPreEmphasis)
HBO_PIN_NAMED_PROP(getPinSlew, setPinSlew, kSlew)

#undef HBO_PIN_NAMED_PROP

const std::string& HBOPinProps::getPinInternalVref() const {
    return m_extras.get().internalVref;
}

const std::string& HBOPinProps::getGtLoc() const {
    return m_extras.get().gtLoc;
}

bool HBOPinProps::setPinInternalVref(const std::string& value) {
    m_extras.get().internalVref = value;
    return true;
}

bool HBOPinProps::setGtLoc(const std::string& value) {
    m_extras.get().gtLoc = value;
    return true;
}

bool HBOPinProps::getIOBankPropertyList(std::map<std::string, std::string>& out) const {
    out = getIOBankPropertyList();
    return true;
}

std::string HBOPinProps::getIOBankPropertyValue(const std::string& name) const {
    if (name.empty() || !m_extras.peek())
        return std::string();
    for (const auto& kv : m_extras.peek()->ioBankProps)
        if (HBOCase::iequals(kv.first, name))
            return kv.second;
    return std::string();
}

bool HBOPinProps::setIOBankProperty(const std::string& name, const std::string& value) {
    if (name.empty())
        return false;
    m_extras.get().ioBankProps[name] = value;
    return true;
}

bool HBOPinProps::addPartOf(const std::map<std::string, std::string>& partOf) {
    m_extras.get().partOf.push_back(partOf);
    return true;
}

std::vector<std::map<std::string, std::string>>& HBOPinProps::getPartOf() {
    return m_extras.get().partOf;
}

const std::vector<std::map<std::string, std::string>>& HBOPinProps::getPartOf() const {
    return m_extras.get().partOf;
}

const std::map<std::string, std::string>& HBOPinProps::getIOBankPropertyList() const {
    return m_extras.get().ioBankProps;
}

const std::map<std::string, std::string>* HBOPinProps::madeIntfPortMap() const {
    const Extras* extras = m_extras.peek();
    return extras && extras->hasIntfPortMap ? &extras->intfPortMap : nullptr;
}

std::map<std::string, std::string>& HBOPinProps::intfPortMap() const {
    Extras& extras = m_extras.get();
    extras.hasIntfPortMap = true;
    if (m_hasIntfPort) {
        extras.intfPortMap[*m_intf] = std::to_string(m_intfPortIndex);
        m_intf = nullptr;
        m_hasIntfPort = false;
    }
    return extras.intfPortMap;
}

std::map<std::string, std::string>& HBOPinProps::getIntfPortMap() {
    return intfPortMap();
}

const std::map<std::string, std::string>& HBOPinProps::getIntfPortMap() const {
    return intfPortMap();
}

bool HBOPinProps::addIntfPortMap(const std::string& intf, const std::string& port) {
    int index = 0;
    if (!madeIntfPortMap() && (!m_hasIntfPort || *m_intf == intf) && HBOIndexText::toNumber(port, index)) {
        const std::string* shared = m_hasIntfPort ? m_intf : internedName(intf);
        if (shared) {
            m_intf = shared;
            m_intfPortIndex = index;
            m_hasIntfPort = true;
            return true;
        }
    }
    intfPortMap()[intf] = port;
    return true;
}

std::size_t HBOPinProps::getSharedInterfaceNameCount() {
    SharedNames& shared = sharedNames();
    std::lock_guard<std::mutex> hold(shared.lock);
    return shared.names.size();
}

std::string HBOPinProps::getPortForInterface(const std::string& intf) const {
    if (m_hasIntfPort)
        return *m_intf == intf ? std::to_string(m_intfPortIndex) : std::string();
    const std::map<std::string, std::string>* ports = madeIntfPortMap();
    if (!ports)
        return std::string();
    auto it = ports->find(intf);
    return it == ports->end() ? std::string() : it->second;
}

bool HBOPinProps::setProp(int index, HBOModelPort* port, const std::string& name, const std::string& loc,
                          const std::string& diffTerm, const std::string& drive, const std::string& ioStandard,
                          const std::string& slew, const std::string& outputImpedance,
                          const std::string& ibufLowPwr, const std::string& odt, const std::string& equalization,
                          const std::string& preEmphasis, const std::string& dqsBias) {
    beforeKeyChange(&name, m_owner);
    m_name = name;
    m_loc = HBOCase::upper(loc);
    m_ownerPort = port;
    m_pinIndex = index;
    setPortProp(kDiffTerm, diffTerm);
    setPortProp(kDrive, drive);
    setPortProp(kIOStandard, ioStandard);
    setPortProp(kSlew, slew);
    setPortProp(kOutputImpedance, outputImpedance);
    setPortProp(kIbufLowPwr, ibufLowPwr);
    setPortProp(kOdt, odt);
    setPortProp(kEqualization, equalization);
    setPortProp(kPreEmphasis, preEmphasis);
    setPortProp(kDqsBias, dqsBias);
    return true;
}

void HBOPinProps::copyIOPropertiesFrom(const HBOPinProps& other) {
    if (&other == this)
        return;
    if (!other.m_loc.empty())
        m_loc = other.m_loc;
    other.forEachPortProp([this](const std::string& name, const std::string& value) {
        if (!value.empty())
            portPropEntry(name) = value;
    });
    if (const Extras* extras = other.m_extras.peek()) {
        if (!extras->internalVref.empty())
            m_extras.get().internalVref = extras->internalVref;
        if (!extras->gtLoc.empty())
            m_extras.get().gtLoc = extras->gtLoc;
        for (const auto& kv : extras->ioBankProps)
            m_extras.get().ioBankProps[kv.first] = kv.second;
    }
}

void HBOPinProps::display(int /*indent*/) const {
    // The keys printed under their own labels, not again among the rest.
    static const std::set<std::string> labelled = {kIOStandard, kDrive, kSlew, kDiffTerm};
    const std::map<std::string, std::string> props = getPortProps();
    auto valueOf = [&props](const char* key) {
        auto it = props.find(key);
        return it == props.end() ? std::string() : it->second;
    };
    std::ostringstream os;
    os << "Pin - index:" << m_pinIndex << ", name:" << m_name << ", iostd:" << valueOf(kIOStandard);
    if (hasPinLoc())
        os << ", loc:" << m_loc;
    for (const char* key : {kDrive, kSlew, kDiffTerm})
        if (props.count(key))
            os << ", " << key << ":" << valueOf(key);
    for (const auto& kv : props)
        if (!labelled.count(kv.first))
            os << ", " << kv.first << ":" << kv.second;
    if (const Extras* extras = m_extras.peek())
        for (const auto& kv : extras->ioBankProps)
            os << ", iobank." << kv.first << ":" << kv.second;
    os << "\n";
    std::fputs(os.str().c_str(), stderr);
}
