// The preset file model: what a read keeps, and the exact bytes it writes
// with the parts it leaves out.
#include "migration_fixture.h"

#include "HBMPresetFile.h"

namespace {

const char* const kPresets = R"(<?xml version="1.0"?>
<IP_PRESETS schema="1.0">
  <IP_Preset preset_proc_name="ddr_preset">
    <IP vendor="zv" library="ip" name="memc" version="2.1" ip_interface="c0">
      <user_parameters name="ignored">
        <user_parameter name="CONFIG.A" value="1" value_type="long"/>
        <USER_HIER_PARAMETER name="CONFIG.H"><user_parameter name="x" value="2"/></USER_HIER_PARAMETER>
        <anything name="CONFIG.B" value="a&lt;b"/>
      </user_parameters>
      <model_parameters><model_parameter name="M" value="3"/></model_parameters>
    </IP>
    <note/>
    <ip/>
  </IP_Preset>
  <other preset_proc_name="skipped"/>
  <ip_preset preset_proc_name="empty_preset"/>
</IP_PRESETS>
)";

}  // namespace

class PresetFile : public MigrationFixture {};

TEST_F(PresetFile, ReadKeepsEveryIpPresetWithItsIpsAndUserParameters) {
    HBMPresetFile file;
    auto root = xml(kPresets);
    ASSERT_TRUE(file.parse(root.get()));
    EXPECT_EQ(file.getSchema(), "1.0");
    const std::vector<PresetProc> procs = file.getPresetProcs();
    ASSERT_EQ(procs.size(), 2u);
    EXPECT_EQ(procs[0].name, "ddr_preset");
    EXPECT_EQ(procs[1].name, "empty_preset");
    EXPECT_TRUE(procs[1].ips.empty());

    // A child that is not an "ip" leaves an empty record in its place.
    ASSERT_EQ(procs[0].ips.size(), 3u);
    const IPPresets& ip = procs[0].ips[0];
    EXPECT_EQ(ip.vendor + ":" + ip.library + ":" + ip.name + ":" + ip.version + ":" + ip.ip_interface, "zv:ip:memc:2.1:c0");
    ASSERT_EQ(ip.userParams.size(), 2u);
    EXPECT_EQ(ip.userParams[0].name + "=" + ip.userParams[0].value + "/" + ip.userParams[0].value_type, "CONFIG.A=1/long");
    EXPECT_EQ(ip.userParams[1].name + "=" + ip.userParams[1].value + "/" + ip.userParams[1].value_type, "CONFIG.B=a<b/");
    // The hierarchical parameter is counted, its content not kept.
    ASSERT_EQ(ip.hierParams.size(), 1u);
    EXPECT_EQ(ip.hierParams[0].name, "");
    EXPECT_TRUE(ip.hierParams[0].children.empty());
    EXPECT_EQ(procs[0].ips[1].vendor + procs[0].ips[1].name, "");
    EXPECT_TRUE(procs[0].ips[1].userParams.empty());

    // A second read adds to the procedures.
    auto again = xml("<ip_presets schema=\"2\"><ip_preset preset_proc_name=\"p\"/></ip_presets>");
    file.parse(again.get());
    EXPECT_EQ(file.getPresetProcs().size(), 3u);
    EXPECT_EQ(file.getSchema(), "2");
    EXPECT_FALSE(file.parse(nullptr));
    UserHierParam hier;
    EXPECT_FALSE(file.readHierParam(nullptr, hier));
}

TEST_F(PresetFile, WritesTheFixedIndentedFormExactly) {
    EXPECT_EQ(written(HBMPresetFile()), expected("preset_empty.xml"));

    // No "user_parameters" wrapper, no value_type, no hierarchical parameter,
    // nothing escaped; an empty record is written as an empty "ip".
    HBMPresetFile file;
    auto root = xml(kPresets);
    file.parse(root.get());
    EXPECT_EQ(written(file), expected("preset_full.xml"));
}
