// Properties of a component mode.
#include "HBOBoardComponent.h"
#include "HBOBusIfPreference.h"
#include "HBOCPropertyInit.h"
#include "HBOComponentMode.h"
#include "HBOPropertyRegistry.h"

using namespace HBOPropertyRegistry;

namespace HBOCPropertyInit {
namespace board_component_mode {

void init() {
    typedef HBOComponentMode M;
    HCPProperty::ObjectInfo info = objectInfo<M>();
    addClass(info, "board_component_mode");
    addString<M>(info, "name", [](const M& m) { return m.getName(); });
    addString<M>(info, "description", [](const M& m) { return m.getDescription(); });
    addList<M>(info, "interfaces", [](const M& m) {
        HATStringList names;
        for (const auto& entry : m.getInterfaces())
            names.append(entry.second.first);
        return names;
    });
    addList<M>(info, "enablement_dependency", [](const M& m) { return dependencyList(m.getEnablementDependency()); });
    addList<M>(info, "presets", [](const M& m) {
        const HBOBoardComponent* owner = m.getOwnerComponent();
        return presetList(m.getPresetProcName(), owner ? owner->getBoard() : nullptr);
    });
    addList<M>(info, "preferences", [](const M& m) {
        HATStringList names;
        for (const HBOBusIfPreference* p : m.getPreferredIps())
            if (p)
                names.append(p->getPrefName());
        return names;
    });
    addString<M>(info, "is_enabled", [](const M& m) { return m.getIsEnabled(); }).getAttrSpec().setVisible(true);
}

}  // namespace board_component_mode
}  // namespace HBOCPropertyInit
