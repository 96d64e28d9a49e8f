#include "analysis/catalogues/catalogueCheck.h"

#include <gtest/gtest.h>
#include <support/messageLog.h>
#include <support/tempFiles.h>

#include <string>
#include <vector>

#include "../support/findingLines.h"
#include "analysis/catalogues/jsonCheck.h"
#include "analysis/catalogues/setupsCheck.h"

namespace rfu::test {
namespace {

using namespace std::string_literals;

struct Row {
    const char* name;
    std::string json;
    std::vector<std::string> findings;
};

class JsonChecks : public testing::Test {
protected:
    void expectOfCatalogues(const std::vector<Row>& rows) const { expect(rows, checkCatalogue); }
    void expectOfSetups(const std::vector<Row>& rows) const { expect(rows, checkSetups); }

private:
    void expect(const std::vector<Row>& rows, Findings (*check)(const QString&)) const {
        const MessageLog log;
        for (const Row& row : rows) {
            const QString file = QString::fromStdString(files_.write("file.json", row.json));
            EXPECT_EQ(listed(check(file)), row.findings) << row.name;
        }
    }

    TempFiles files_;
};

/// The rest of a choice, or the whole of it.
const std::string kId = R"("id":"x","enum":1,"dispSeq":1})";
const std::string kLabel = R"("label":"L",)";
const std::string kChoice = "{" + kLabel + kId;
const std::string kSetup = R"({"id":"x","label":"L"})";
const std::string kNothing = "1:1 error nothing-loaded: loads no choice at all";
const std::string kRefused = "error json-syntax: refused, nothing is loaded: ";
const std::string kOddity = "warning json-oddity: read, though other programs refuse it: ";

/// The choices of an item, which begin on line 2.
std::string item(const std::string& choices) {
    return "{\"a\":[\n" + choices + "]}";
}

TEST_F(JsonChecks, PassWhatIsReadAsWritten) {
    expectOfCatalogues(
        {{"plain", item(kChoice), {}},
         {"a schema for editors", R"({"$schema":"s","a":[)" + kChoice + "]}", {}},
         {"all ways to write a whole number",
          item("{" + kLabel + R"("id":"x","enum":2.0,"dispSeq":20e-1},{"label":"M",)" +
               R"("id":"y","enum":-2147483648,"dispSeq":2147483647})"),
          {}},
         {"escapes", item(R"({"label":"\u00e4\n\"\ud83d\ude00\/",)" + kId), {}},
         {"an escaped key", item(R"({"\u006cabel":"L",)" + kId), {}},
         {"lines that end in CR LF", "{\r\n\"a\":[\r\n" + kChoice + "\r\n]}\r\n", {}},
         {"the same id in two items", R"({"a":[)" + kChoice + R"(],"b":[)" + kChoice + "]}", {}}});
    expectOfSetups(
        {{"plain", item(kSetup), {}},
         {"half a character, which setups keep", item(R"({"id":"\ud800","label":"L"})"), {}}});
}

TEST_F(JsonChecks, FindWhatIsSkipped) {
    const std::string shape =
        R"(, where a choice is an object with "label", "id", "enum" and "dispSeq")";
    expectOfCatalogues(
        {{"a member is missing",
          item(R"({"label":"L","id":"y","enum":2},)" + kChoice),
          {R"(2:1 warning member-missing: skipped: no member "dispSeq")"}},
         {"several are missing",
          item("{\"enum\":2},\n " + kChoice + ",{}"),
          {R"(2:1 warning member-missing: skipped: no members "label", "id" and "dispSeq")",
           R"(3:46 warning member-missing: skipped: no members "label", "id", "enum" and "dispSeq")"}},
         {"a misspelt member",
          item(R"({"lable":"L",)" + kId),
          {kNothing, R"(2:1 warning member-missing: skipped: no member "label")",
           R"(2:2 warning member-misspelt: "lable" is not read; did you mean "label"?)"}},
         {"letter case",
          item(kChoice + ",\n{" + kLabel + R"("ID":"y","Enum":2,"dispseq":2})"),
          {R"(3:1 warning member-missing: skipped: no members "id", "enum" and "dispSeq")",
           R"(3:14 warning member-misspelt: "ID" is not read; did you mean "id"?)",
           R"(3:23 warning member-misspelt: "Enum" is not read; did you mean "enum"?)",
           R"(3:32 warning member-misspelt: "dispseq" is not read; did you mean "dispSeq"?)"}},
         {"other words",
          item(kChoice + ",\n" + R"({"Name":"L","id":"y","code":2,"order":2,"sequence":3})"),
          {R"(3:1 warning member-missing: skipped: no members "label", "enum" and "dispSeq")",
           R"(3:2 warning member-misspelt: "Name" is not read; did you mean "label"?)",
           R"(3:22 warning member-misspelt: "code" is not read; did you mean "enum"?)",
           R"(3:31 warning member-misspelt: "order" is not read; did you mean "dispSeq"?)",
           R"(3:41 warning member-misspelt: "sequence" is not read; did you mean "dispSeq"?)"}},
         {"more of them",
          item(kChoice + ",\n" + R"({"title":"L","key":"y","value":2,"position":2})"),
          {R"(3:1 warning member-missing: skipped: no members "label", "id", "enum" and "dispSeq")",
           R"(3:2 warning member-misspelt: "title" is not read; did you mean "label"?)",
           R"(3:14 warning member-misspelt: "key" is not read; did you mean "id"?)",
           R"(3:24 warning member-misspelt: "value" is not read; did you mean "enum"?)",
           R"(3:34 warning member-misspelt: "position" is not read; did you mean "dispSeq"?)"}},
         {"another word beside its member",
          item("{\"code\":2," + kLabel + kId),
          {R"(2:2 warning member-unknown: "code" is not read)"}},
         {"near a member that is there",
          item("{\"lable\":\"M\"," + kLabel + kId),
          {R"(2:2 warning member-unknown: "lable" is not read)"}},
         {"an unknown member",
          item(R"({"default":true,)" + kLabel + kId),
          {R"(2:2 warning member-unknown: "default" is not read)"}},
         {"no objects",
          item("1, \"x\", null, true,\n[{}],\n" + kChoice),
          {"2:1 warning element-skipped: skipped: a number" + shape,
           "2:4 warning element-skipped: skipped: a text" + shape,
           "2:9 warning element-skipped: skipped: null" + shape,
           "2:15 warning element-skipped: skipped: true" + shape,
           "3:1 warning element-skipped: skipped: a list" + shape}},
         {"no lists",
          "{\"version\":3,\n\"a\":" + kChoice + ",\n\"b\":[" + kChoice + "],\"$schema\":1}",
          {R"(1:2 warning list-ignored: "version" is ignored: a number, where items are lists of choices in [ ])",
           R"(2:1 warning list-ignored: "a" is ignored: an object, where items are lists of choices in [ ])",
           R"(3:51 warning list-ignored: "$schema" is ignored: a number, where items are lists of choices in [ ])"}},
         {"an empty list",
          "{\"b\":[ ],\n\"a\":[" + kChoice + "]}",
          {R"(1:2 warning item-empty: the item "b" is not created: its list is empty)"}},
         {"nothing at all", " {}", {"1:2 error nothing-loaded: loads no choice at all"}},
         {"a list at the top",
          "\n[" + kChoice + "]",
          {"2:1 error json-top-level: nothing is loaded: a list at the top, where the library "
           "takes an "
           "object of items"}}});
    expectOfSetups(
        {{"a member is missing",
          item(R"({"id":"y","name":"N"},)" + kSetup),
          {R"(2:1 warning member-missing: skipped: no member "label")",
           R"(2:11 warning member-misspelt: "name" is not read; did you mean "label"?)"}},
         {"an empty list",
          "{\"b\":[],\n\"c\":[" + kSetup + "]}",
          {R"(1:2 note group-empty: the group "b" has no setup)"}},
         {"no object",
          item(" false," + kSetup),
          {R"(2:2 warning element-skipped: skipped: false, where a setup is an object with "label" and "id")"}},
         {"no list",
          "{\"b\":\"x\",\"c\":[" + kSetup + "]}",
          {R"(1:2 warning list-ignored: "b" is ignored: a text, where groups are lists of setups in [ ])"}},
         {"nothing at all", "{}", {"1:1 error nothing-loaded: loads no setup at all"}}});
}

TEST_F(JsonChecks, FindWhatIsReadOtherwise) {
    const auto withEnum = [](const char* value) {
        return item(R"({"label":"L","id":"x","enum":)"s + value + R"(,"dispSeq":1})");
    };
    const std::string read = "2:30 error number-not-read: enum is read as 0: ";
    expectOfCatalogues(
        {{"a fraction", withEnum("1.5"), {read + "1.5 is not a whole number"}},
         {"a fraction of many decimals",
          withEnum(("1.5" + std::string(38, '0')).c_str()),
          {read + "1.5" + std::string(37, '0') + "... is not a whole number"}},
         {"beyond 32 bits", withEnum("2147483648"), {read + "2147483648 does not fit 32 bits"}},
         {"far beyond", withEnum("-1e300"), {read + "-1e300 does not fit 32 bits"}},
         {"a text", withEnum("\"3\""), {read + "\"3\" is a text; numbers stand without quotes"}},
         {"a flag", withEnum("true"), {read + "true is no number"}},
         {"a list", withEnum("[1]"), {read + "a list, not a number"}},
         {"a sequence",
          item(R"({"label":"L","id":"x","enum":1,"dispSeq":"2"})"),
          {"2:42 error number-not-read: dispSeq is read as 0, which hides the choice: \"2\" is a "
           "text; "
           "numbers stand without quotes"}},
         {"texts that are none",
          item(R"({"label":10,"id":null,"enum":1,"dispSeq":1})"),
          {"2:10 error text-not-read: the label is read as an empty text: 10 is no text in quotes",
           "2:18 error text-not-read: the id is read as an empty text: null is no text in quotes"}},
         {"half a character",
          item(R"({"label":"?\ud83d",)" + kId),
          {"2:10 warning text-half-character: the label has a question mark for half a character"}},
         {"half a character in an item's id",
          "{\"\\ud83d\":[" + kChoice + "]}",
          {"1:2 warning text-half-character: the id of the item has a question mark for half a "
           "character"}},
         {"a byte-order mark in a text",
          item("{\"label\":\"\xEF\xBB\xBFL\"," + kId),
          {"2:11 warning text-mark-dropped: the label loses the invisible byte-order mark at its "
           "beginning"}},
         {"a byte-order mark that stays, in front of an escape",
          item("{\"label\":\"\xEF\xBB\xBF\\n\"," + kId),
          {}},
         {"one in a member's key",
          item("{\"\xEF\xBB\xBFlabel\":\"L\"," + kId + "," + kChoice),
          {R"(2:1 warning member-missing: skipped: no member "label")",
           R"(2:3 warning text-mark-dropped: "label" is not read: an invisible byte-order mark stands in front of the key)"}},
         {"one in an item's key",
          "{\"\xEF\xBB\xBF"
          "a\":[" +
              kChoice + "]}",
          {R"(1:3 warning text-mark-dropped: an invisible byte-order mark in front of the key: read as "a")"}}});
    expectOfSetups(
        {{"texts that are none",
          item(R"({"id":1.5,"label":{}})"),
          {"2:7 error text-not-read: the id is read as an empty text: 1.5 is no text in quotes",
           "2:19 error text-not-read: the label is read as an empty text: an object is no "
           "text in quotes"}}});
}

TEST_F(JsonChecks, FindWhatIsReplaced) {
    const auto choice = [](const char* id, const char* numbers) {
        return R"({"id":")"s + id + R"(","label":")" + numbers + R"(","enum":)" + numbers +
               R"(,"dispSeq":)" + numbers + "}";
    };
    expectOfCatalogues(
        {{"ids that differ in letter case",
          item(choice("auto", "1") + ",\n" + choice("Auto", "2")),
          {"2:1 note element-replaced: not loaded: the choice at line 3 has the same id in upper "
           "case",
           "3:1 warning id-replaces: replaces the choice at line 2: ids are compared in upper "
           "case"}},
         {"the same id three times",
          item(choice("a", "1") + ",\n" + choice("a", "1") + ",\n" + choice("a", "2")),
          {"2:1 note element-replaced: not loaded: the choice at line 3 has the same id",
           "3:1 warning id-replaces: replaces the choice at line 2, which has the same id",
           "3:1 note element-replaced: not loaded: the choice at line 4 has the same id",
           "4:1 warning id-replaces: replaces the choice at line 3, which has the same id"}},
         {"a member twice",
          item("{" + kLabel + "\n" + kLabel + kId),
          {R"(3:1 warning member-repeated: replaces "label" of line 2: of members with the same key the last one counts)"}},
         {"an item twice",
          "{\"a\":[\n" + choice("a", "1") + ",5],\n\"\\u0061\":[" + choice("b", "2") + "]}",
          {"2:1 note element-replaced: not loaded: line 3 has \"a\" again",
           "2:45 note element-replaced: not loaded: line 3 has \"a\" again",
           R"(3:1 warning member-repeated: replaces "a" of line 1 and its 2 choices: of members with the same key the last one counts)"}},
         {"a mark in a key, and the same mark as an escape",
          "{\"\xEF\xBB\xBF"
          "a\":[],\n\"\\ufeffa\":[" +
              choice("b", "2") + "]}",
          {R"(2:1 warning member-repeated: replaces "a" of line 1: of members with the same key the last one counts)"}},
         {"no list twice",
          "{\"b\":1,\"a\":[" + kChoice + "],\n\"b\":2}",
          {R"(2:1 warning member-repeated: replaces "b" of line 1: of members with the same key the last one counts)",
           R"(2:1 warning list-ignored: "b" is ignored: a number, where items are lists of choices in [ ])"}}});
    expectOfSetups(
        {{"a group twice",
          "{\"a\":[" + kSetup + "],\n\"a\":[" + kSetup + "]}",
          {"1:7 note element-replaced: not loaded: line 2 has \"a\" again",
           R"(2:1 warning member-repeated: replaces "a" of line 1 and its 1 setup: of members with the same key the last one counts)"}}});
}

TEST_F(JsonChecks, FindWhatSurprises) {
    expectOfCatalogues(
        {{"hidden",
          item(R"({"label":"L","id":"x","enum":1,"dispSeq":0})"),
          {"2:42 note choice-hidden: hidden: dispSeq is 0"}},
         {"the same numbers and labels",
          item(kChoice + ",\n" + R"({"label":"L","id":"y","enum":1,"dispSeq":1})"),
          {"3:10 note label-repeated: the label finds this choice or the one at line 2",
           "3:30 note code-repeated: enum 1 finds this choice or the one at line 2",
           "3:42 note sequence-repeated: dispSeq 1 is also that of the one at line 2"}},
         {"two hidden ones",
          item(
              R"({"label":"L","id":"x","enum":1,"dispSeq":0},{"label":"M","id":"y","enum":2,"dispSeq":0})"),
          {"2:42 note choice-hidden: hidden: dispSeq is 0",
           "2:86 note choice-hidden: hidden: dispSeq is 0"}},
         {"answers for what is unknown",
          item("{\"label\":\"\",\"id\":\"None\",\"enum\":-999,\"dispSeq\":1},\n"
               "{\"label\":\"L\",\"id\":\"\",\"enum\":1,\"dispSeq\":2}"),
          {"2:10 note answer-of-absence: an empty label is also the answer for an unknown choice",
           "2:18 note answer-of-absence: the id \"None\" is also the answer for an unknown choice",
           "2:32 note answer-of-absence: the enum -999 is also the answer for an unknown choice",
           "3:19 note answer-of-absence: an empty id is also the answer for an unknown choice"}},
         {"items that differ in letter case",
          "{\"trigger\":[" + kChoice + "],\n\"Trigger\":[" + kChoice + "]}",
          {"2:1 note item-case: another item than that of line 1: ids of items are compared letter "
           "by letter"}},
         {"items that differ in a blank",
          "{\"trigger\":[" + kChoice + "],\n\"trigger \":[" + kChoice + "]}",
          {"2:1 note item-case: another item than that of line 1: ids of items are compared letter "
           "by letter"}},
         {"a byte-order mark",
          "\xEF\xBB\xBF" + item(kChoice),
          {"1:1 note json-byte-order-mark: a byte-order mark: the library skips it, other programs "
           "refuse "
           "the file"}}});
    expectOfSetups(
        {{"groups out of order",
          "{\"b\":[" + kSetup + "],\n\"a\":[" + R"({"id":"y","label":"L"}]})",
          {R"(2:1 note group-order: read before the group "b" of line 1: groups are read in the order of their keys)"}},
         {"an id twice",
          item(kSetup + ",\n" + kSetup),
          {"3:7 note setup-repeated: offered beside the setup at line 2, which has the same id"}}});
}

TEST_F(JsonChecks, FindWhatOnlyTheLibraryReads) {
    const auto label = [](const char* text) { return item("{\"label\":\""s + text + "\"," + kId); };
    expectOfCatalogues(
        {{"a tab",
          label("a\tb"),
          {"2:12 " + kOddity + "a tab in a text, which JSON writes as \\t"}},
         {"a line end",
          label("a\nb"),
          {"2:12 " + kOddity + "a line end in a text, which JSON writes as \\n"}},
         {"a control character",
          label("a\x01"),
          {"2:12 " + kOddity + "a control character in a text, which JSON writes as \\u0001"}},
         {"an escaped line end",
          label("a\\\nb"),
          {"2:12 " + kOddity + "a line end in a text, which JSON writes as \\n"}},
         {"an unknown escape",
          label("\\q"),
          {"2:11 " + kOddity + "\\q in a text, which JSON writes as q"}},
         {"numbers without a digit",
          item(R"({"label":"L","id":"x","enum":5.,"dispSeq":-.0e1})"),
          {"2:30 " + kOddity + "5., which JSON writes as 5.0",
           "2:43 " + kOddity + "-.0e1, which JSON writes as -0.0e1",
           "2:43 note choice-hidden: hidden: dispSeq is 0"}}});
}

TEST_F(JsonChecks, FindWhereReadingEnds) {
    const auto refused = [](const char* place, const std::string& reason) {
        return std::vector<std::string>{place + kRefused + reason};
    };
    const std::string marks = "a typographic quotation mark; texts stand in plain double quotes";
    expectOfCatalogues(
        {{"empty", "", refused("", "the file is empty")},
         {"blank", " \n", refused("", "the file is empty")},
         {"a comma too many", item(kChoice + ",\n"),
          refused("2:44 ", "nothing stands behind the comma")},
         {"a comma too many in an object", "{\"a\":1,}",
          refused("1:7 ", "nothing stands behind the comma")},
         {"no comma", "{\"a\":1 \"b\":2}", refused("1:8 ", "a comma or } is missing here")},
         {"no comma in a list", "[1 2]", refused("1:4 ", "a comma or ] is missing here")},
         {"no colon", "{\"a\" 1}", refused("1:6 ", "a colon is missing behind the key")},
         {"no colon but =", "{\"a\"=1}",
          refused("1:5 ", "a colon stands between a key and its value")},
         {"no comma but ;", "[1;2]", refused("1:3 ", "commas separate")},
         {"no quotes", "{a:1}", refused("1:2 ", "a key in double quotes is missing here")},
         {"no quotes in a value", "[x]",
          refused("1:2 ",
                  "here is no value: a text in double quotes, a number, true, false, null, a list "
                  "or an object")},
         {"single quotes", "{'a':1}", refused("1:2 ", "texts stand in double quotes")},
         {"typographic quotes", "{\u201Ca\u201D:1}", refused("1:2 ", marks)},
         {"no end of a text", "[\"a]",
          refused("1:5 ", "the quote that ends the last text is missing")},
         {"no end of a text on its line", "{\"a\":[{\"label\":\"L,\n\"id\":1}]}",
          refused("1:19 ", "a text is open at the end of the line: a quote is missing")},
         {"no end of the file", "{\"a\":[",
          refused("1:7 ", "the file ends before its last bracket")},
         {"more behind it", "{} {}", refused("1:4 ", "more stands behind the end of the document")},
         {"a comment", "{ // x\n}", refused("1:3 ", "JSON has no comments")},
         {"NaN", "[NaN]", refused("1:2 ", "JSON has no NaN")},
         {"an infinity", "[-Infinity]", refused("1:3 ", "JSON has no infinity")},
         {"True", "[True]", refused("1:2 ", "true stands in lower case")},
         {"False", "[1,\nFalse]", refused("2:1 ", "false stands in lower case")},
         {"NULL", "[ NULL]", refused("1:3 ", "null stands in lower case")},
         {"None", "[None]", refused("1:2 ", "None is null in JSON")},
         {"a blank of typesetters", "{\u00A0}",
          refused("1:2 ",
                  "a blank that does not break lines (U+00A0), where JSON takes plain ones")},
         {"a plus sign", "[+1]", refused("1:2 ", "a number has no plus sign in front")},
         {"a leading zero", "[01]", refused("1:3 ", "a number does not begin with 0")},
         {"no exponent", "[1e]", refused("1:4 ", "a digit is missing in the number")},
         {"a point too many", "[1.2.3]", refused("1:5 ", "a comma or ] is missing here")},
         {"a number without exponent at another", "[1e.5]",
          refused("1:4 ", "a digit is missing in the number")},
         {"a sign between numbers", "[1-.5]", refused("1:3 ", "a comma or ] is missing here")},
         {"a short code", "[\"\\u12\"]",
          refused("1:3 ", "four hexadecimal digits stand behind \\u")},
         {"a large number", "[1, 1e400]",
          refused("1:5 ",
                  "1e400 is too large, or too near to zero, for any number of the library")},
         {"a small number", "[1e-400]",
          refused("1:2 ",
                  "1e-400 is too large, or too near to zero, for any number of the library")},
         {"a number of many digits", "[1" + std::string(400, '0') + "]",
          refused("1:2 ", "1" + std::string(39, '0') +
                              "... is too large, or too near to zero, for any number of the "
                              "library")},
         {"a byte-order mark alone", "\xEF\xBB\xBF",
          refused("1:4 ", "the file ends before its last bracket")},
         {"no list or object", " 5",
          refused("1:2 ", "a number at the top, where the library takes an object of items")},
         {"too deep", std::string(1025, '[') + std::string(1025, ']'),
          refused("1:1025 ", "more than 1024 lists and objects in one another")},
         {"an 8-bit encoding",
          "{\n\"a\xE4\":[]}",
          {"2:3 error json-encoding: refused, nothing is loaded: byte E4 is no UTF-8, as where a "
           "file is "
           "saved in an 8-bit encoding"}},
         {"UTF-16",
          "\xFF\xFE{\0}\0"s,
          {"1:1 error json-encoding: refused, nothing is loaded: this is UTF-16 or UTF-32; the "
           "library reads "
           "UTF-8"}},
         {"UTF-16 without a mark",
          "\0{\0}"s,
          {"1:1 error json-encoding: refused, nothing is loaded: this is UTF-16 or UTF-32; the "
           "library reads "
           "UTF-8"}}});
}

/// A check of files that the instrument reads with a JSON reader of its own.
class OwnReaderCheck : public JsonCheck {
public:
    explicit OwnReaderCheck(const QString& file)
        : JsonCheck(file, setupsRules(), {"group", "setup", {QStringLiteral("id")}}) {}

private:
    void takeList(const JsonList&) override {}
    void checkValues(const JsonElement&) override {}
    void takeElement(const JsonList&, const JsonElement&) override {}
    void finish() override {}
};

TEST(JsonCheck, FollowsTheInstrumentsOwnReader) {
    const TempFiles files;
    const auto found = [&files](const std::string& json, bool isLoaded) {
        OwnReaderCheck check(QString::fromStdString(files.write("file.json", json)));
        return listed(check.run([isLoaded](const QString&) { return isLoaded; }));
    };
    EXPECT_EQ(
        found(item(kSetup), false),
        std::vector<std::string>{kRefused + "the instrument's own JSON reader wants otherwise"});
    EXPECT_EQ(found("{\n 'a':[" + kSetup + "]}", true),
              std::vector<std::string>{
                  "2:2 " + kOddity +
                  "texts stand in double quotes; nothing behind this place is checked"});
}

/// The text of a file with the edits of all findings.
std::string mended(const std::string& text, const Findings& findings) {
    std::string result = text;
    std::vector<Edit> edits = findings.mends();
    std::sort(edits.begin(), edits.end(),
              [](const Edit& a, const Edit& b) { return a.offset > b.offset; });
    for (const Edit& edit : edits) {
        result.replace(static_cast<std::size_t>(edit.offset), static_cast<std::size_t>(edit.length),
                       edit.replacement);
    }
    return result;
}

TEST_F(JsonChecks, MendWhatHasOneRightMend) {
    const MessageLog log;
    const TempFiles files;
    const struct {
        const char* name;
        std::string json;
        std::string mended;
    } kRows[] = {
        {"keys", item(R"({"lable":"L","ID":"x","enum":1,"Dispseq":1})"), item(kChoice)},
        {"two keys for one member", item(R"({"lable":"L","labl":"M",)" + kId),
         item(R"({"lable":"L","labl":"M",)" + kId)},
        {"a byte-order mark", "\xEF\xBB\xBF" + item(kChoice), item(kChoice)},
        {"one in a key", item("{\"\xEF\xBB\xBFlabel\":\"L\"," + kId), item(kChoice)},
        {"one in a misspelt key", item("{\"\xEF\xBB\xBFlable\":\"L\"," + kId), item(kChoice)},
        {"one in a key that is there too",
         item("{\"label\":\"L\",\"\xEF\xBB\xBFlabel\":\"M\"," + kId),
         item("{\"label\":\"L\",\"\xEF\xBB\xBFlabel\":\"M\"," + kId)},
        {"one in a key of a list that is there too",
         "{\"a\":[" + kChoice + "],\"\xEF\xBB\xBF" + "a\":[" + kChoice + "]}",
         "{\"a\":[" + kChoice + "],\"\xEF\xBB\xBF" + "a\":[" + kChoice + "]}"},
        {"one in a text under a misspelt key", item("{\"lable\":\"\xEF\xBB\xBFL\"," + kId),
         item(kChoice)},
        {"a line end in a misspelt key", item("{\"la\nbel\":\"L\"," + kId), item(kChoice)},
        {"a line end in a number in quotes",
         item("{\"label\":\"L\",\"id\":\"x\",\"enum\":\"1\n\",\"dispSeq\":1}"), item(kChoice)},
        {"a number in quotes beside a misspelt key",
         item(R"({"lable":"L","id":"x","enum":"1","dispSeq":1})"), item(kChoice)},
        {"a number in quotes under a misspelt key",
         item(R"({"label":"L","id":"x","Enum":"1","dispSeq":1})"), item(kChoice)},
        {"a number in quotes", item(R"({"label":"L","id":"x","enum":"1","dispSeq":1})"),
         item(kChoice)},
        {"no number in quotes", item(R"({"label":"L","id":"x","enum":"1.5","dispSeq":1})"),
         item(R"({"label":"L","id":"x","enum":"1.5","dispSeq":1})")},
        {"what only the library reads",
         item("{\"label\":\"\t\\q\\\n\",\"id\":\"x\",\"enum\":1.,\"dispSeq\":.1e1}"),
         item(R"({"label":"\tq\n","id":"x","enum":1.0,"dispSeq":0.1e1})")}};
    for (const auto& row : kRows) {
        const std::string file = files.write("file.json", row.json);
        EXPECT_EQ(mended(row.json, checkCatalogue(QString::fromStdString(file))), row.mended)
            << row.name;
        files.write("file.json", row.mended);
        EXPECT_EQ(mended(row.mended, checkCatalogue(QString::fromStdString(file))), row.mended)
            << row.name << ", mended twice";
    }
}

}  // namespace
}  // namespace rfu::test
