// The pass that turns jumper positions into the is-enabled texts of
// connections, nets, components, interfaces and modes.
#include "HBOBoard.h"

#include <locale>

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/split.hpp>

#include "HBOCase.h"
#include "HBOBoardBus.h"
#include "HBOBoardBusNet.h"
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOComponentMode.h"
#include "HBOFoldedComponentIndex.h"
#include "HBOJumper.h"

namespace {

const char* boolText(bool value) {
    return value ? "true" : "false";
}

// Evaluates a dependency "{name value name value ...}" against the jumpers.
// Returns false when the dependency is absent (nothing to evaluate); `result`
// then stays untouched.
bool evaluateDependency(const std::string& dependency, const std::vector<HBOJumper*>& jumpers, bool& result) {
    std::string text = dependency;
    // Only the first brace of each kind goes; any others stay in the tokens.
    std::string::size_type pos = text.find('{');
    if (pos != std::string::npos)
        text.erase(pos, 1);
    pos = text.find('}');
    if (pos != std::string::npos)
        text.erase(pos, 1);
    if (text.empty())
        return false;

    std::vector<std::string> tokens;
    boost::algorithm::split(tokens, text, boost::algorithm::is_any_of(" "));

    result = true;
    for (const HBOJumper* jumper : jumpers) {
        if (!jumper)
            continue;
        for (std::size_t i = 0; i < tokens.size(); i += 2) {
            if (!HBOCase::iequals(tokens[i], jumper->getName()))
                continue;
            // A name without a value token ("{j1}") asks for no position the
            // jumper can have, so it disables the object: a malformed
            // dependency should not switch anything on.
            const std::string value = i + 1 < tokens.size() ? tokens[i + 1] : std::string();
            if (value != boolText(jumper->getDefaultValue()))
                result = false;
            break;
        }
    }
    return true;
}

}  // namespace

void HBOBoard::updateEnablement() {
    // Connections first: components are judged by their connections.
    for (HBOBoardBus* bus : m_buses) {
        if (!bus)
            continue;
        bool enabled = true;
        if (evaluateDependency(bus->getEnablementDependency(), m_jumpers, enabled))
            bus->setIsEnabled(boolText(enabled));
        for (HBOBoardBusNet* net : bus->getBoardBusNets())
            if (net)
                net->setIsEnabled(boolText(enabled));
    }

    // One sweep in key order: an interface sees components further on with
    // the value they had before this pass.
    const HBOFoldedComponentIndex byName(m_components);
    for (auto& entry : m_components) {
        HBOBoardComponent* component = entry.second;
        if (!component)
            continue;

        std::vector<HBOBoardBus*> buses;
        getBusesOfComponent(component->getComponentName(), buses);
        bool enabled = false;
        for (const HBOBoardBus* bus : buses)
            if (HBOCase::iequals(bus->getIsEnabled(), "true"))
                enabled = true;
        component->setIsEnabled(boolText(enabled));

        std::vector<HBOBusIf*> interfaces;
        component->getBusIfSeq(interfaces, true);
        for (HBOBusIf* busIf : interfaces) {
            if (!busIf)
                continue;
            if (const HBOBoardComponent* of = byName.find(busIf->getOfComponent()))
                busIf->setIsEnabled(of->getIsEnabled());
        }

        for (HBOComponentMode* mode : component->getComponentModes()) {
            if (!mode)
                continue;
            bool modeEnabled = true;
            if (evaluateDependency(mode->getEnablementDependency(), m_jumpers, modeEnabled))
                mode->setIsEnabled(boolText(modeEnabled));
        }
    }
}
