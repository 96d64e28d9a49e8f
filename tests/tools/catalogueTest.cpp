#include <gtest/gtest.h>

#include <string>

#include "runCommand.h"

namespace {

const char kChoices[] = R"({
  "trigger": [
    {"id": "ext", "label": "External, \"TTL\"", "enum": 2, "dispSeq": 2},
    {"id": "free", "label": "Free run", "enum": 0, "dispSeq": 1},
    {"id": "video", "label": "Vidéo", "enum": 1, "dispSeq": 2},
    {"id": "burst", "label": "Burst", "enum": -7, "dispSeq": 0},
    {"id": "without sequence", "label": "skipped", "enum": 1},
    "skipped"
  ],
  "atten": [
    {"id": "auto", "label": "Auto", "enum": 1, "dispSeq": 1},
    {"id": "dB10", "label": "10 dB", "enum": 1, "dispSeq": 1},
    {"id": "AUTO", "label": "Automatic", "enum": 1, "dispSeq": 1}
  ],
  "empty": [],
  "version": 3
}
)";

}  // namespace

TEST(Catalogue, listsItemsSorted) {
    const SampleFolder folder;
    folder.add("c.json", kChoices);
    expectCommands(
        {
            shows("text: by item, sequence, code, id", "catalogue c.json",
                  "item     dispSeq  enum  id     label            offered\n"
                  "atten          1     1  AUTO   Automatic        yes\n"
                  "atten          1     1  dB10   10 dB            yes\n"
                  "trigger        0    -7  burst  Burst            no\n"
                  "trigger        1     0  free   Free run         yes\n"
                  "trigger        2     1  video  Vidéo            yes\n"
                  "trigger        2     2  ext    External, \"TTL\"  yes\n"),
            shows("one item as CSV", "catalogue c.json --item trigger --format csv",
                  "item,dispSeq,enum,id,label,offered\n"
                  "trigger,0,-7,burst,Burst,false\n"
                  "trigger,1,0,free,Free run,true\n"
                  "trigger,2,1,video,Vidéo,true\n"
                  "trigger,2,2,ext,\"External, \"\"TTL\"\"\",true\n"),
            shows("JSON", "catalogue c.json --item trigger --code 2 --format json",
                  "[\n  {\"item\": \"trigger\", \"dispSeq\": 2, \"enum\": 2, \"id\": \"ext\", "
                  "\"label\": \"External, \\\"TTL\\\"\", \"offered\": true}\n]\n"),
        },
        folder);
}

TEST(Catalogue, queries) {
    const SampleFolder folder;
    folder.add("c.json", kChoices);
    const auto ask = [](const QStringList& query) {
        return QStringList{"catalogue", "c.json", "--item"} + query +
               QStringList{"--format", "csv"};
    };
    const std::string heading = "item,dispSeq,enum,id,label,offered\n";
    const std::string free = heading + "trigger,1,0,free,Free run,true\n";
    expectCommands(
        {
            shows("id", ask({"trigger", "--id", "free"}), free),
            shows("id in other letter case", ask({"trigger", "--id", "FrEE"}), free),
            shows("code", ask({"trigger", "--code", "0"}), free),
            shows("negative code, not offered", ask({"trigger", "--code", "-7"}),
                  heading + "trigger,0,-7,burst,Burst,false\n"),
            shows("every choice of a code", ask({"atten", "--code", "1"}),
                  heading + "atten,1,1,AUTO,Automatic,true\natten,1,1,dB10,10 dB,true\n"),
            shows("label", ask({"trigger", "--label", "Free run"}), free),
            fails("labels are exact", ask({"trigger", "--label", "free run"}),
                  "c.json: item \"trigger\" has no choice with label \"free run\""),
            fails("no such id", ask({"trigger", "--id", "x"}),
                  "c.json: item \"trigger\" has no choice with id \"x\""),
            fails("no such code", ask({"trigger", "--code", "9"}),
                  "c.json: item \"trigger\" has no choice with code 9"),
            fails("no such item", ask({"Trigger"}), "c.json: there is no item \"Trigger\""),
            fails("an item without choices is none", ask({"empty"}),
                  "c.json: there is no item \"empty\""),
            fails("no such item with a query", ask({"x", "--code", "1"}),
                  "c.json: there is no item \"x\""),
            misuses("query without item", "catalogue c.json --id free",
                    "--id, --code and --label need --item"),
            misuses("two queries", ask({"trigger", "--id", "free", "--label", "x"}),
                    "only one of --id, --code and --label can be asked for"),
            misuses("code without number", ask({"trigger", "--code", "x"}),
                    "--code: \"x\" is not a whole number"),
        },
        folder);
}

TEST(Catalogue, badFiles) {
    const SampleFolder folder;
    folder.add("empty.json", "");
    folder.add("blank.json", " \r\n\n");
    folder.add("array.json", "[1]");
    folder.add("nothing.json", "{}");
    folder.add("lists.json", R"({"a": [], "b": []})");
    folder.add("setups.json", R"({"a": [{"id": "x", "label": "y"}]})");
    folder.add("misspelt.json", R"({"a": [{"ID": 1, "Label": 1, "Enum": 1, "DispSeq": 1}]})");
    folder.add("other.json", R"({"a": []  , "version": 3})");
    const std::string noChoice =
        ": holds no choice of a catalogue: an object with id, label, enum and dispSeq in the list "
        "of an item";
    folder.add("truncated.json", std::string(kChoices).substr(0, 60));
    folder.add("comma.json", "{\n\"a\": [],\n}\n");
    folder.add("noise.json", std::string("\x89PNG\r\n\x1A\n\x00\xFF\xFE\n", 12));
    folder.add("utf8.json", "{\"a\": [\n\n{\"id\": \"\xFF\"}]}");
    expectCommands(
        {
            fails("missing", "catalogue none.json", "none.json: No such file or directory"),
            fails("directory", "catalogue .", ".: Is a directory"),
            fails("device", "catalogue /dev/null", "/dev/null: is not a regular file"),
            fails("empty", "catalogue empty.json", "empty.json: is empty (illegal value)"),
            fails("blank lines only", "catalogue blank.json",
                  "blank.json: is empty (illegal value)"),
            fails("no object", "catalogue array.json",
                  "array.json: the top level is not an object"),
            shows("no items is no error", "catalogue nothing.json",
                  "item  dispSeq  enum  id  label  offered\n"),
            shows("nor are empty ones", "catalogue lists.json",
                  "item  dispSeq  enum  id  label  offered\n"),
            fails("setups", "catalogue setups.json", "setups.json" + noChoice),
            fails("misspelt members", "catalogue misspelt.json", "misspelt.json" + noChoice),
            fails("another file", "catalogue other.json --format csv", "other.json" + noChoice),
            fails("cut off", "catalogue truncated.json", "truncated.json:3: unterminated string"),
            fails("a comma too many", "catalogue comma.json",
                  "comma.json:3: object is missing after a comma"),
            fails("binary noise", "catalogue noise.json", "noise.json:1: illegal value"),
            fails("broken UTF-8", "catalogue utf8.json", "utf8.json:3: invalid UTF8 string"),
        },
        folder);
}

TEST(Catalogue, fileNamesAreUtf8) {
    const SampleFolder folder;
    folder.add("m\u00FCnchen.json",
               "{\"a\": [{\"id\": 1, \"label\": \"x\", \"enum\": 1, \"dispSeq\": 1}]}");
    expectCommands(
        {
            shows("UTF-8", "catalogue m\u00FCnchen.json --format csv",
                  "item,dispSeq,enum,id,label,offered\na,1,1,,x,true\n"),
        },
        folder);
}

TEST(Catalogue, controlCharactersStayInsideTheirCell) {
    const SampleFolder folder;
    folder.add(
        "c.json",
        R"({"a": [{"id": "x", "label": "1\n2\t3\r\u0001\u007f\\", "enum": 1, "dispSeq": 1}]})");
    expectCommands(
        {
            shows("text escapes", "catalogue c.json",
                  "item  dispSeq  enum  id  label               offered\n"
                  "a           1     1  x   1\\n2\\t3\\r\\x01\\x7f\\  yes\n"),
            shows("JSON escapes", "catalogue c.json --format json",
                  "[\n  {\"item\": \"a\", \"dispSeq\": 1, \"enum\": 1, \"id\": \"x\", "
                  "\"label\": \"1\\n2\\t3\\r\\u0001\\u007f\\\\\", \"offered\": true}\n]\n"),
            shows("CSV quotes", "catalogue c.json --format csv",
                  "item,dispSeq,enum,id,label,offered\na,1,1,x,\"1\n2\t3\r\x01\x7F\\\",true\n"),
        },
        folder);
}

TEST(Catalogue, longCellsAreShortenedInText) {
    const SampleFolder folder;
    const auto choice = [](const std::string& label, const char* sequence) {
        return R"({"id": "x)" + std::string(sequence) + R"(", "label": ")" + label +
               R"(", "enum": 1, "dispSeq": )" + sequence + "}";
    };
    const std::string whole(80, 'w');
    folder.add("c.json", "{\"a\": [" + choice(whole, "1") + "," + choice(whole + "!", "2") + "]}");
    expectCommands(
        {
            shows("eighty characters", "catalogue c.json",
                  "item  dispSeq  enum  id  label" + std::string(77, ' ') + "offered\n" +
                      "a           1     1  x1  " + whole + "  yes\n" +
                      "a           2     1  x2  " + std::string(79, 'w') + "\u2026  yes\n")
                .noting("cells of more than 80 characters are shortened; --format csv has them "
                        "whole"),
            shows("all in CSV", "catalogue c.json --format csv",
                  "item,dispSeq,enum,id,label,offered\na,1,1,x1," + whole + ",true\na,2,1,x2," +
                      whole + "!,true\n"),
        },
        folder);
}

TEST(Catalogue, controlCharactersDoNotSteerTheTerminal) {
    const SampleFolder folder;
    folder.add(
        "c.json",
        R"({"a": [{"id": "x", "label": "\u001b[31m\u0080\u009b\u009f\u00a0\u007e\u001f\u202e\u2029\u0020",)"
        R"( "enum": 1, "dispSeq": 1}]})");
    folder.add("s.json", R"({"a": [{"id": "x\ny", "label": "\u001b]0;title\u0007"}]})");
    folder.add("marks.json", R"({"a": [{"id": "x", "label": "\ufeffm\ufeffW\ufeff"}]})");
    expectCommands(
        {
            shows("escape sequences, also those of one character", "catalogue c.json",
                  "item  dispSeq  enum  id  label                                    offered\n"
                  "a           1     1  x   "
                  "\\x1b[31m\\x80\\x9b\\x9f\u00A0~\\x1f\\u202e\\u2029   yes\n"),
            shows("in JSON by their numbers", "catalogue c.json --format json",
                  "[\n  {\"item\": \"a\", \"dispSeq\": 1, \"enum\": 1, \"id\": \"x\", \"label\": "
                  "\"\\u001b[31m\\u0080\\u009b\\u009f\u00A0~\\u001f\\u202e\\u2029 \", "
                  "\"offered\": true}\n]\n"),
            shows("in every table", "setups s.json",
                  "index  id    label\n    0  x\\ny  \\x1b]0;title\\x07\n"),
            shows("byte-order marks, also the first", "setups marks.json",
                  "index  id  label\n    0  x   \\ufeffm\\ufeffW\\ufeff\n"),
            shows("byte-order marks in JSON", "setups marks.json --format json",
                  "[\n  {\"index\": 0, \"id\": \"x\", \"label\": "
                  "\"\\ufeffm\\ufeffW\\ufeff\"}\n]\n"),
            shows("byte-order marks in CSV as they are", "setups marks.json --format csv",
                  "index,id,label\n0,x,\uFEFFm\uFEFFW\uFEFF\n"),
        },
        folder);
}
