#include "generate/generate_data_file.h"

#include "generate/record_writer.h"
#include "support/generation_setup.h"

namespace korvex::test {
namespace {

class GenerateDataFileTest : public testing::Test {
 protected:
  std::int32_t run(std::int32_t output_option = 0) {
    ClGenerateDataFile generator;
    generator.main.control_path = setup.control();
    generator.output_option = output_option;
    generator.parent = &parent_window;
    return generator.run();
  }

  GenerationSetup setup;
  int parent_window = 0;
};

TEST_F(GenerateDataFileTest, ShowsProgressAndOffersCancelOnlyWhenGuarded) {
  setup.save_settings();
  setup.write_control({.records = 4});
  for (const std::int32_t option : {0, 1, guarded_output}) {
    setup.interface = {};
    EXPECT_EQ(run(option), 0);
    EXPECT_EQ(setup.interface.offered_cancel, option == guarded_output);
    EXPECT_EQ(setup.interface.progress_parent, &parent_window);
    EXPECT_EQ(setup.interface.percentages, (std::vector<int>{25, 50, 75, 100}));
    EXPECT_EQ(setup.interface.polls, 4);
    EXPECT_EQ(setup.interface.open_progresses, 0);
  }
}

}  // namespace
}  // namespace korvex::test
