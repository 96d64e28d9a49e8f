#include <gtest/gtest.h>

#include <QFile>

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
            {"text: by item, sequence, code, id",
             {"catalogue", "c.json"},
             "",
             0,
             "item     dispSeq  enum  id     label            offered\n"
             "atten          1     1  AUTO   Automatic        yes\n"
             "atten          1     1  dB10   10 dB            yes\n"
             "trigger        0    -7  burst  Burst            no\n"
             "trigger        1     0  free   Free run         yes\n"
             "trigger        2     1  video  Vidéo            yes\n"
             "trigger        2     2  ext    External, \"TTL\"  yes\n",
             ""},
            {"one item as CSV",
             {"catalogue", "c.json", "--item", "trigger", "--format", "csv"},
             "",
             0,
             "item,dispSeq,enum,id,label,offered\n"
             "trigger,0,-7,burst,Burst,false\n"
             "trigger,1,0,free,Free run,true\n"
             "trigger,2,1,video,Vidéo,true\n"
             "trigger,2,2,ext,\"External, \"\"TTL\"\"\",true\n",
             ""},
            {"JSON",
             {"catalogue", "c.json", "--item", "trigger", "--code", "2", "--format", "json"},
             "",
             0,
             "[\n  {\"item\": \"trigger\", \"dispSeq\": 2, \"enum\": 2, \"id\": \"ext\", "
             "\"label\": \"External, \\\"TTL\\\"\", \"offered\": true}\n]\n",
             ""},
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
            {"id", ask({"trigger", "--id", "free"}), "", 0, free, ""},
            {"id in other letter case", ask({"trigger", "--id", "FrEE"}), "", 0, free, ""},
            {"code", ask({"trigger", "--code", "0"}), "", 0, free, ""},
            {"negative code, not offered", ask({"trigger", "--code", "-7"}), "", 0,
             heading + "trigger,0,-7,burst,Burst,false\n", ""},
            {"every choice of a code", ask({"atten", "--code", "1"}), "", 0,
             heading + "atten,1,1,AUTO,Automatic,true\natten,1,1,dB10,10 dB,true\n", ""},
            {"label", ask({"trigger", "--label", "Free run"}), "", 0, free, ""},
            {"labels are exact", ask({"trigger", "--label", "free run"}), "", 1, "",
             "rfutils: c.json: item \"trigger\" has no choice with label \"free run\"\n"},
            {"no such id", ask({"trigger", "--id", "x"}), "", 1, "",
             "rfutils: c.json: item \"trigger\" has no choice with id \"x\"\n"},
            {"no such code", ask({"trigger", "--code", "9"}), "", 1, "",
             "rfutils: c.json: item \"trigger\" has no choice with code 9\n"},
            {"no such item", ask({"Trigger"}), "", 1, "",
             "rfutils: c.json: there is no item \"Trigger\"\n"},
            {"an item without choices is none", ask({"empty"}), "", 1, "",
             "rfutils: c.json: there is no item \"empty\"\n"},
            {"no such item with a query", ask({"x", "--code", "1"}), "", 1, "",
             "rfutils: c.json: there is no item \"x\"\n"},
            {"query without item",
             {"catalogue", "c.json", "--id", "free"},
             "",
             2,
             "",
             "rfutils: --id, --code and --label need --item (see rfutils catalogue --help)\n"},
            {"two queries", ask({"trigger", "--id", "free", "--label", "x"}), "", 2, "",
             "rfutils: only one of --id, --code and --label can be asked for (see rfutils "
             "catalogue "
             "--help)\n"},
            {"code without number", ask({"trigger", "--code", "x"}), "", 2, "",
             "rfutils: --code: \"x\" is not a whole number (see rfutils catalogue --help)\n"},
        },
        folder);
}

TEST(Catalogue, badFiles) {
    const SampleFolder folder;
    folder.add("empty.json", "");
    folder.add("blank.json", " \r\n\n");
    folder.add("array.json", "[1]");
    folder.add("nothing.json", "{}");
    folder.add("truncated.json", std::string(kChoices).substr(0, 60));
    folder.add("comma.json", "{\n\"a\": [],\n}\n");
    folder.add("noise.json", std::string("\x89PNG\r\n\x1A\n\x00\xFF\xFE\n", 12));
    folder.add("utf8.json", "{\"a\": [\n\n{\"id\": \"\xFF\"}]}");
    expectCommands(
        {
            {"missing",
             {"catalogue", "none.json"},
             "",
             1,
             "",
             "rfutils: none.json: No such file or directory\n"},
            {"directory", {"catalogue", "."}, "", 1, "", "rfutils: .: Is a directory\n"},
            {"device",
             {"catalogue", "/dev/null"},
             "",
             1,
             "",
             "rfutils: /dev/null: is not a regular file\n"},
            {"empty",
             {"catalogue", "empty.json"},
             "",
             1,
             "",
             "rfutils: empty.json: is empty (illegal value)\n"},
            {"blank lines only",
             {"catalogue", "blank.json"},
             "",
             1,
             "",
             "rfutils: blank.json: is empty (illegal value)\n"},
            {"no object",
             {"catalogue", "array.json"},
             "",
             1,
             "",
             "rfutils: array.json: the top level is not an object\n"},
            {"no items is no error",
             {"catalogue", "nothing.json"},
             "",
             0,
             "item  dispSeq  enum  id  label  offered\n",
             ""},
            {"cut off",
             {"catalogue", "truncated.json"},
             "",
             1,
             "",
             "rfutils: truncated.json:3: unterminated string\n"},
            {"a comma too many",
             {"catalogue", "comma.json"},
             "",
             1,
             "",
             "rfutils: comma.json:3: object is missing after a comma\n"},
            {"binary noise",
             {"catalogue", "noise.json"},
             "",
             1,
             "",
             "rfutils: noise.json:1: illegal value\n"},
            {"broken UTF-8",
             {"catalogue", "utf8.json"},
             "",
             1,
             "",
             "rfutils: utf8.json:3: invalid UTF8 string\n"},
        },
        folder);
}

TEST(Catalogue, fileNamesAreUtf8) {
    const SampleFolder folder;
    folder.add("m\u00FCnchen.json",
               "{\"a\": [{\"id\": 1, \"label\": \"x\", \"enum\": 1, \"dispSeq\": 1}]}");
    expectCommands({{"UTF-8",
                     {"catalogue", QString::fromUtf8("m\u00FCnchen.json"), "--format", "csv"},
                     "",
                     0,
                     "item,dispSeq,enum,id,label,offered\na,1,1,,x,true\n",
                     ""}},
                   folder);
}

TEST(Catalogue, controlCharactersStayInsideTheirCell) {
    const SampleFolder folder;
    folder.add(
        "c.json",
        R"({"a": [{"id": "x", "label": "1\n2\t3\r\u0001\u007f\\", "enum": 1, "dispSeq": 1}]})");
    expectCommands({{"text escapes",
                     {"catalogue", "c.json"},
                     "",
                     0,
                     "item  dispSeq  enum  id  label               offered\n"
                     "a           1     1  x   1\\n2\\t3\\r\\x01\\x7f\\  yes\n",
                     ""},
                    {"JSON escapes",
                     {"catalogue", "c.json", "--format", "json"},
                     "",
                     0,
                     "[\n  {\"item\": \"a\", \"dispSeq\": 1, \"enum\": 1, \"id\": \"x\", "
                     "\"label\": \"1\\n2\\t3\\r\\u0001\\u007f\\\\\", \"offered\": true}\n]\n",
                     ""},
                    {"CSV quotes",
                     {"catalogue", "c.json", "--format", "csv"},
                     "",
                     0,
                     "item,dispSeq,enum,id,label,offered\na,1,1,x,\"1\n2\t3\r\x01\x7F\\\",true\n",
                     ""}},
                   folder);
}

TEST(Catalogue, controlCharactersDoNotSteerTheTerminal) {
    const SampleFolder folder;
    folder.add(
        "c.json",
        R"({"a": [{"id": "x", "label": "\u001b[31m\u0080\u009b\u009f\u00a0\u007e\u001f\u0020",)"
        R"( "enum": 1, "dispSeq": 1}]})");
    folder.add("s.json", R"({"a": [{"id": "x\ny", "label": "\u001b]0;title\u0007"}]})");
    expectCommands({{"escape sequences, also those of one character",
                     {"catalogue", "c.json"},
                     "",
                     0,
                     "item  dispSeq  enum  id  label                        offered\n"
                     "a           1     1  x   \\x1b[31m\\x80\\x9b\\x9f\u00A0~\\x1f   yes\n",
                     ""},
                    {"in every table",
                     {"setups", "s.json"},
                     "",
                     0,
                     "index  id    label\n    0  x\\ny  \\x1b]0;title\\x07\n",
                     ""}},
                   folder);
}

TEST(Catalogue, sampleFile) {
    const QString file = QStringLiteral(RFUTILS_SAMPLES "/catalogue.json");
    expectCommands({{"sample",
                     {"catalogue", file, "--item", "attenuation"},
                     "",
                     0,
                     "item         dispSeq  enum  id    label                 offered\n"
                     "attenuation        0     5  db40  40 dB (service only)  no\n"
                     "attenuation        1     0  auto  Auto                  yes\n"
                     "attenuation        2     1  db0   0 dB                  yes\n"
                     "attenuation        3     2  db10  10 dB                 yes\n"
                     "attenuation        4     3  db20  20 dB                 yes\n"
                     "attenuation        5     4  db30  30 dB                 yes\n",
                     ""}});
}
