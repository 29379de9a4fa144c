#include "kortavin/window/module.h"

#include <gmock/gmock.h>

#include "kortavin/base/exception.h"

using namespace kortavin::window;

namespace {

constexpr DialogTemplate kDialogs[] = {{1, 0, 10, 10, 0, "Fixed", 9, {}}};
const ResourceModule kFront{
    "front.dll", kDialogs, [](unsigned number) { return number == 1 ? "front" : nullptr; }, {}};
const ResourceModule kBack{
    "back.dll", kDialogs, [](unsigned number) { return number < 3 ? "back" : nullptr; }, {}};

class Modules : public ::testing::Test {
  protected:
    ~Modules() override {
        RemoveModule(&kFront);
        RemoveModule(&kBack);
    }
};

}  // namespace

TEST_F(Modules, OwnModuleAnswersToItsNameInAnyCase) {
    const ResourceModule& own = OwnModule();
    EXPECT_EQ(FindModule("Kortavin.dll"), &own);
    EXPECT_EQ(FindModule("KORTAVIN.DLL"), &own);
    EXPECT_EQ(FindModule("Kortavin"), nullptr);
    EXPECT_EQ(FindModule(nullptr), nullptr);
    EXPECT_STREQ(own.version.product, "Kortavin");
    EXPECT_NE(own.version.major + own.version.minor + own.version.patch, 0);
}

TEST_F(Modules, CurrentSourceIsAskedFirstThenTheChainFromItsFront) {
    AddModule(&kBack);
    AddModule(&kFront);
    AddModule(&kBack);  // is there already
    EXPECT_EQ(CurrentSource(), &kFront);
    EXPECT_EQ(FindText(1), CString("front"));
    EXPECT_EQ(FindText(2), CString("back"));
    EXPECT_EQ(FindDialog(1)->module, &kFront);
    {
        const SourceScope scope(&kBack);
        EXPECT_EQ(FindText(1), CString("back"));
        EXPECT_EQ(FindDialog(1)->module, &kBack);
        RemoveModule(&kBack);
        EXPECT_EQ(CurrentSource(), &kFront);
    }
    EXPECT_EQ(FindText(2), CString(OwnModule().text(2)));
    EXPECT_FALSE(FindText(0));
    EXPECT_FALSE(FindDialog(4711));
}

TEST_F(Modules, DamagedRecordIsRefused) {
    static constexpr DialogTemplate kTwins[] = {kDialogs[0], kDialogs[0]};
    static constexpr DialogTemplate kWithoutText[] = {{2, 77, 10, 10, 0, "Fixed", 9, {}}};
    const ResourceModule nameless{"", kDialogs, nullptr, {}};
    const ResourceModule twins{"twins.dll", kTwins, nullptr, {}};
    const ResourceModule textless{"textless.dll", kWithoutText, kFront.text, {}};
    for (const ResourceModule* const damaged : {&nameless, &twins, &textless}) {
        EXPECT_THROW(AddModule(damaged), CResourceException);
        EXPECT_EQ(FindModule(damaged->name), nullptr);
    }
}
