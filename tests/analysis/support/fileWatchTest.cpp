#include "analysis/support/fileWatch.h"

#include <gtest/gtest.h>
#include <support/tempFiles.h>

#include <filesystem>
#include <functional>

#include "analysis/support/inputError.h"

namespace rfu::test {
namespace {

TEST(FileWatch, NoticesOtherFilesAndOtherContents) {
    TempFiles files;
    files.write("other", "abc");
    const struct {
        const char* name;
        std::function<void()> change;
    } kChanges[] = {
        {"longer", [&] { files.write("file", "abcd"); }},
        {"as long", [&] { files.write("file", "xyz"); }},
        {"replaced",
         [&] { std::filesystem::rename(files.write("new", "abc"), files.path("file")); }},
        {"a link elsewhere",
         [&] {
             std::filesystem::remove(files.path("file"));
             files.makeLink("file", files.path("other"));
         }},
        {"removed", [&] { std::filesystem::remove(files.path("file")); }}};
    for (const auto& row : kChanges) {
        std::filesystem::remove(files.path("file"));
        const QString name = QString::fromStdString(files.write("file", "abc"));
        std::filesystem::last_write_time(files.path("file"), {});  // another time is a later one
        const FileWatch watch({name});
        EXPECT_NO_THROW(watch.requireUnchanged()) << row.name;
        row.change();
        try {
            watch.requireUnchanged();
            ADD_FAILURE() << row.name;
        } catch (const InputError& error) {
            EXPECT_EQ(error.file(), name);
            EXPECT_EQ(error.problem(), "changed while it was read");
        }
    }
}

TEST(FileWatch, NoticesFilesThatAppear) {
    TempFiles files;
    const FileWatch watch({QString::fromStdString(files.path("file"))});
    EXPECT_NO_THROW(watch.requireUnchanged());
    files.write("file", "");
    EXPECT_THROW(watch.requireUnchanged(), InputError);
}

}  // namespace
}  // namespace rfu::test
