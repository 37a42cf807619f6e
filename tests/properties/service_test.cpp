// The host's property service on a type of the test's own: name matching,
// dynamic names, listings, advisory warnings, type checks, and writes with
// undo and redo.
#include "property_fixture.h"

#include <memory>

#include "HTCErrors.h"

using namespace property_fixture;
using zrc::tcltasks::tclany;

namespace {

struct Gadget {
    explicit Gadget(std::string n = "", int l = 0, std::map<std::string, std::string> e = {})
        : name(std::move(n)), level(l), extras(std::move(e)) {}
    std::string name;
    int level;
    std::map<std::string, std::string> extras;
};
struct Other {};

typedef HCPProperty::Setter::Objects Objects;

// Sets level on every gadget; undo puts the old levels back.
class LevelSetter : public HCPProperty::Setter {
public:
    int set(Tcl_Interp*, const Objects& objects, const std::string&, const HATAttr& value) override {
        for (const tclany& o : objects.items()) {
            Gadget* g = HCPProperty::Types::nativeOf<Gadget*>(o);
            m_old.emplace_back(g, g->level);
        }
        m_value = std::stoi(value.getCharStringVal());
        return redo();
    }
    int undo() override {
        for (auto& e : m_old)
            e.first->level = e.second;
        return 0;
    }
    int redo() override {
        for (auto& e : m_old)
            e.first->level = m_value;
        return 0;
    }

private:
    std::vector<std::pair<Gadget*, int>> m_old;
    int m_value = 0;
};

HCPProperty::ObjectInfo registerGadget(bool sorted) {
    HCPProperty::ObjectInfo info = HCPProperty::getObjectInfo(typeid(Gadget*));
    if (!info) {
        info = HCPProperty::ObjectInfo(new HCPProperty::detail::poi_native<Gadget*>());
        HCPProperty::detail::registerObjectInfo(info);
    }
    info.setSortProperties(sorted);
    auto text = [](std::function<std::string(const Gadget&)> read) {
        return [read](Tcl_Interp* interp, const tclany& v, const std::string&, HATAttrAny& out) {
            const Gadget* g = HCPProperty::Types::nativeOf<Gadget*>(v);
            HATAttrUtils::setAny(out, read(*g));
            HCPProperty::Utils::setAttrResult(interp, out);
            return true;
        };
    };
    info.createSpec("zeta").setGetFcn(text([](const Gadget&) { return "z"; }));
    info.createSpec("Name").setGetFcn(text([](const Gadget& g) { return g.name; }));
    HCPProperty::Spec& level = info.createSpec("level");
    level.setGetFcn([](Tcl_Interp* interp, const tclany& v, const std::string&, HATAttrAny& out) {
        HATAttrUtils::setAny(out, HCPProperty::Types::nativeOf<Gadget*>(v)->level);
        HCPProperty::Utils::setAttrResult(interp, out);
        return true;
    });
    level.getAttrSpec().setAttrType(HATAttrTypes::ATTR_INT);
    level.setSetterFcn([] { return std::unique_ptr<HCPProperty::Setter>(new LevelSetter); });
    HCPProperty::Spec& secret = info.createSpec("secret");
    secret.setGetFcn(text([](const Gadget&) { return "s"; }));
    secret.getAttrSpec().setVisible(false);
    HCPProperty::Spec& old = info.createSpec("old_name");
    old.setGetFcn(text([](const Gadget& g) { return g.name; }));
    old.getAttrSpec().setReadOnly(true);
    old.getAttrSpec().advisoryText = "Use 'Name'";
    HCPProperty::Spec& dyn = info.createSpec("_default_");
    dyn.setGetFcn([](Tcl_Interp*, const tclany& v, const std::string& name, HATAttrAny& out) {
        const Gadget* g = HCPProperty::Types::nativeOf<Gadget*>(v);
        auto it = g->extras.find(name);
        if (it == g->extras.end())
            return false;
        HATAttrUtils::setAny(out, it->second);
        return true;
    });
    dyn.setGetDefaultFcn([](const tclany& v, HSTVector<HCPProperty::Types::PNameAndProp>& out) {
        for (const auto& e : HCPProperty::Types::nativeOf<Gadget*>(v)->extras)
            out.emplace_back(e.first, HATAttr(e.second));
    });
    return info;
}

Objects objectsOf(std::initializer_list<tclany> items) {
    Objects objects;
    for (const tclany& i : items)
        objects.append(i);
    return objects;
}

}  // namespace

TEST_F(PropertyTest, NamesMatchWithoutCaseAndUnknownNamesGoToTheDefaultSpecAsWritten) {
    registerGadget(true);
    Gadget g{"g1", 3, {{"Extra.A", "1"}}};
    EXPECT_EQ(get(&g, "name"), "g1");
    EXPECT_EQ(get(&g, "NAME"), "g1");
    EXPECT_EQ(tclResult(&g, "LEVEL"), "3");
    // The default spec sees the name as written: its own test is exact.
    EXPECT_EQ(get(&g, "Extra.A"), "1");
    EXPECT_EQ(get(&g, "extra.a"), "<none>");
    // "_default_" itself is no property.
    EXPECT_EQ(get(&g, "_default_"), "<none>");
    // Hidden: readable, not listed.
    EXPECT_EQ(get(&g, "secret"), "s");
    EXPECT_EQ(listed(&g), (Names{"Extra.A", "level", "Name", "old_name", "zeta"}));
}

TEST_F(PropertyTest, UnsortedListingKeepsRegistrationOrderAndAReplacedSpecItsPlace) {
    HCPProperty::ObjectInfo info = registerGadget(false);
    Gadget g{"g1", 0, {{"B", "b"}, {"A", "a"}}};
    EXPECT_EQ(listed(&g), (Names{"zeta", "Name", "level", "old_name", "A", "B"}));
    info.deleteSpec("zeta");
    EXPECT_EQ(get(&g, "zeta"), "<none>");
    info.createSpec("zeta").setGetFcn([](Tcl_Interp*, const tclany&, const std::string&, HATAttrAny& out) {
        HATAttrUtils::setAny(out, "again");
        return true;
    });
    EXPECT_EQ(listed(&g).front(), "zeta");
    EXPECT_EQ(get(&g, "zeta"), "again");
}

TEST_F(PropertyTest, AnAdvisoryTextIsWarnedAtEachRead) {
    registerGadget(true);
    Gadget g{"g1"};
    EXPECT_EQ(get(&g, "old_name"), "g1");
    get(&g, "OLD_NAME");
    get(&g, "Name");
    EXPECT_EQ(warnings(), (Names{"Property 'old_name' is deprecated. Use 'Name'",
                                 "Property 'old_name' is deprecated. Use 'Name'"}));
}

TEST_F(PropertyTest, ValuesOfTheWrongTypeAreRefused) {
    registerGadget(true);
    Other o;
    HATAttrAny out;
    EXPECT_THROW(HCPProperty::getProperty(nullptr, tclany(&o), "name", out), HTCErrors::type_error);
    EXPECT_THROW(HCPProperty::Types::nativeOf<Gadget*>(tclany(&o)), HTCErrors::type_error);
    EXPECT_EQ(HCPProperty::Types::nativeOf<Gadget*>(tclany()), nullptr);
    try {
        HCPProperty::Types::nativeOf<Gadget*>(tclany(std::string("x")));
        FAIL();
    } catch (const HTCErrors::type_error& e) {
        EXPECT_NE(std::string(e.what()).find("Gadget*"), std::string::npos) << e.what();
    }
}

TEST_F(PropertyTest, WritesGoThroughTheSetterAndUndoAndRedoInOrder) {
    registerGadget(true);
    Gadget a{"a", 1}, b{"b", 2};
    EXPECT_EQ(HCPProperty::setProperty(nullptr, objectsOf({&a, &b}), "Level", HATAttr(std::string("7"))), 0);
    EXPECT_EQ(a.level + b.level, 14);
    EXPECT_EQ(HCPProperty::setProperty(nullptr, objectsOf({&a}), "level", HATAttr(std::string("9"))), 0);
    EXPECT_TRUE(HCPProperty::undo());
    EXPECT_EQ(a.level, 7);
    EXPECT_TRUE(HCPProperty::undo());
    EXPECT_EQ(a.level, 1);
    EXPECT_EQ(b.level, 2);
    EXPECT_FALSE(HCPProperty::undo());
    EXPECT_TRUE(HCPProperty::redo());
    EXPECT_EQ(b.level, 7);
    // A new write drops what could be redone.
    EXPECT_EQ(HCPProperty::setProperty(nullptr, objectsOf({&b}), "level", HATAttr(std::string("5"))), 0);
    EXPECT_FALSE(HCPProperty::redo());
    HCPProperty::clearHistory();
    EXPECT_FALSE(HCPProperty::canUndo());
}

TEST_F(PropertyTest, BadWritesAreRefusedWithAReason) {
    registerGadget(true);
    Gadget a{"a"};
    Other o;
    auto refused = [](const Objects& objects, const std::string& name) {
        try {
            HCPProperty::setProperty(nullptr, objects, name, HATAttr(std::string("1")));
        } catch (const HTCErrors::error& e) {
            return std::string(e.what());
        }
        return std::string("accepted");
    };
    EXPECT_EQ(refused(Objects(), "level"), "no objects to set property 'level' on");
    EXPECT_EQ(refused(objectsOf({&a}), "Name"), "property 'Name' is read-only");
    EXPECT_NE(refused(objectsOf({&a}), "nothing").find("no property 'nothing'"), std::string::npos);
    EXPECT_NE(refused(objectsOf({&a, &o}), "level").find("one type"), std::string::npos);
    EXPECT_FALSE(HCPProperty::canUndo());
}

TEST_F(PropertyTest, ResultsReachTclWithTheirOwnType) {
    HATAttrAny any;
    HATStringList list;
    // Elements go as they stand, so one that is a list itself stays one element.
    list.append("{0 Rev A}");
    list.append("c");
    HATAttrUtils::setAny(any, list);
    HCPProperty::Utils::setAttrResult(s_interp, any);
    int n = 0;
    ASSERT_EQ(Tcl_ListObjLength(s_interp, Tcl_GetObjResult(s_interp), &n), TCL_OK);
    EXPECT_EQ(n, 2);
    EXPECT_STREQ(Tcl_GetStringResult(s_interp), "{0 Rev A} c");
    HATAttrUtils::setAny(any, true);
    HCPProperty::Utils::setAttrResult(s_interp, any);
    EXPECT_STREQ(Tcl_GetStringResult(s_interp), "1");
    // A bare text is a string, not a boolean.
    HATAttrUtils::setAny(any, "text");
    EXPECT_EQ(any.toAttr().getType(), HATAttrTypes::ATTR_STRING);
}
