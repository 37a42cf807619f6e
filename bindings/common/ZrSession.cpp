#include "ZrSession.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <system_error>

#include "HBOBoard.h"
#include "HBOBoardCDataManager.h"
#include "HBOBoardCReposMgr.h"
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOComponentMode.h"
#include "HBOModelPort.h"
#include "HBOParser.h"
#include "HBOPartCReposMgr.h"
#include "HBOPinProps.h"
#include "HCPProperty.h"
#include "HPAParamMgr.h"
#include "HUTGuiEventBroker.h"

namespace zrbind {

const char* const kRepoParam = "board.repoPaths";

Session::Session() {
    auto letGo = [this](const HUTGuiEvent::GuiEventBase&) {
        if (!m_manager || m_stale)
            return;
        HBOBoard* b = m_manager->getBoardStrategy();
        m_rebindName = b ? b->getName() : std::string();
        m_manager->unsetBoardStrategy();
        m_stale = true;
    };
    m_listeners.emplace_back(HUTGuiEventBroker::addListener(HUTGuiEvent::kCatalogModifyPre, letGo));
}

Session::~Session() {
    for (auto& l : m_listeners)
        l->disconnect();
    delete m_manager;
}

HBOBoardCReposMgr& catalogue() {
    // One reference for the life of the process; later calls only look it up.
    static HBOBoardCReposMgr* held = HBOBoardCReposMgr::getGlobal();
    return *held;
}

void syncCatalogue() {
    std::vector<HBOBoard*> ignored;
    catalogue().getAllBoards(ignored);
}

HBOBoardCDataManager& Session::get() {
    if (!m_manager)
        m_manager = new HBOBoardCDataManager;
    // A refresh still due would otherwise come in the middle of the
    // re-choice below and take the name it needs.
    syncCatalogue();
    if (m_stale) {
        m_stale = false;
        m_manager->getBoardPartReposMgr()->refreshBoardParts();
        if (!m_rebindName.empty())
            m_manager->setBoard(m_rebindName, "", true, false);
        m_rebindName.clear();
    }
    return *m_manager;
}

HBOBoard* boardOf(const Ref& r) {
    if (HBOBoardComponent* c = r.as<HBOBoardComponent>())
        return c->getBoard();
    HBOBoardComponent* owner = nullptr;
    HBOBusIf* busIf = r.as<HBOBusIf>();
    if (HBOModelPort* p = r.as<HBOModelPort>())
        busIf = p->getOwner();
    if (busIf)
        owner = busIf->getOwnerComponent();
    else if (HBOPinProps* p = r.as<HBOPinProps>())
        owner = p->getOwner();
    else if (HBOComponentMode* m = r.as<HBOComponentMode>())
        owner = m->getOwnerComponent();
    else
        return nullptr;
    return owner ? owner->getBoard() : nullptr;
}

namespace {
std::vector<Ref> uniqueBoards(const std::vector<HBOBoard*>& boards,
                              const std::function<bool(const std::string&)>& keep) {
    std::vector<Ref> result;
    std::set<const HBOBoard*> seen;
    for (HBOBoard* b : boards) {
        if (!b || !seen.insert(b).second)
            continue;
        if (keep && !keep(b->getName()))
            continue;
        result.push_back(refOf(b));
    }
    return result;
}
}  // namespace

std::vector<Ref> catalogueBoards(bool latest, const std::function<bool(const std::string&)>& keep) {
    std::vector<HBOBoard*> boards;
    if (latest)
        catalogue().getAllLatestBoards(boards);
    else
        catalogue().getAllBoards(boards);
    return uniqueBoards(boards, keep);
}

std::string boardsOfObjects(const std::vector<Ref>& from, const std::function<bool(const std::string&)>& keep,
                            std::vector<Ref>& out) {
    std::vector<HBOBoard*> boards;
    for (const Ref& r : from) {
        HBOBoard* b = boardOf(r);
        if (!b)
            return std::string("of_objects takes components, interfaces, ports, pins or modes, not the ") + r.kind() +
                   " '" + nameOf(r) + "'";
        boards.push_back(b);
    }
    out = uniqueBoards(boards, keep);
    return std::string();
}

std::string setParam(const std::string& name, const std::string& value) {
    HPAParamMgr* params = HPAParamMgr::getParamMgr();
    if (!params->paramExists(name))
        return "unknown parameter '" + name + "'";
    if (!params->setValue(name, value)) {
        const HPAParam* p = params->findParam(name);
        return "parameter '" + name + "' takes a " + (p ? p->getKindName() : "different") + " value, not '" + value +
               "'";
    }
    if (name == kRepoParam)
        syncCatalogue();
    return std::string();
}

bool getParam(const std::string& name, std::string& value) {
    HPAParamMgr* params = HPAParamMgr::getParamMgr();
    if (!params->paramExists(name))
        return false;
    value = params->getValueAsString(name);
    return true;
}

namespace {
// Boards read by readBoardFile, by the path as given made absolute.
std::map<std::string, HBOBoard*>& readBoards() {
    static std::map<std::string, HBOBoard*> boards;
    return boards;
}
}  // namespace

HBOBoard* readBoardFile(const std::string& path, std::string& error) {
    std::error_code ec;
    const std::filesystem::path absolute = std::filesystem::absolute(path, ec);
    const std::string key = ec ? path : absolute.lexically_normal().string();
    HBOBoard* board = new HBOBoard;
    HBOParser parser;
    if (!parser.parseFile(path, board)) {
        delete board;
        error = "could not read the board file '" + path + "'; see the messages above";
        return nullptr;
    }
    HBOBoard*& kept = readBoards()[key];
    delete kept;
    kept = board;
    return board;
}

void dropReadBoards() {
    for (auto& entry : readBoards())
        delete entry.second;
    readBoards().clear();
}

std::string propertyReport(const zrc::tcltasks::tclany& object) {
    struct Row {
        std::string name, type, readOnly, value;
    };
    std::vector<Row> rows{{"Property", "Type", "Read-only", "Value"}};
    for (const HCPProperty::ListedProperty& p : HCPProperty::listProperties(object)) {
        std::string value;
        if (p.dynamic) {
            value = p.value.getCharStringVal();
        } else {
            HATAttrAny any;
            // Read without an interpreter, the report being the result, and
            // without advisory warnings: nobody asked for those properties by name.
            if (HCPProperty::getProperty(nullptr, object, p.name, any, false))
                value = any.toString();
        }
        rows.push_back({p.name, HATAttrTypes::typeName(p.spec.getAttrType()), p.spec.isReadOnly() ? "true" : "false",
                        value});
    }
    std::size_t w0 = 0, w1 = 0, w2 = 0;
    for (const Row& r : rows) {
        w0 = std::max(w0, r.name.size());
        w1 = std::max(w1, r.type.size());
        w2 = std::max(w2, r.readOnly.size());
    }
    auto pad = [](const std::string& s, std::size_t width) { return s + std::string(width - s.size() + 2, ' '); };
    std::string text;
    for (const Row& r : rows) {
        std::string line = pad(r.name, w0) + pad(r.type, w1) + pad(r.readOnly, w2) + r.value;
        line.erase(line.find_last_not_of(' ') + 1);
        text += (text.empty() ? "" : "\n") + line;
    }
    return text;
}

}  // namespace zrbind
