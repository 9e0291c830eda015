#include "zorv/core/reader.h"

#include <functional>

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/core/logger.h"

namespace {

// Binds keywords to lambdas.
struct Handler : LinkHdl {
    explicit Handler(std::function<void(ZoReaderObject*)> call) : act(std::move(call)) {}
    long Run(ZoReaderObject* object) {
        ++calls;
        act(object);
        return 1;
    }
    Link Bind() { return Link(this, &Handler::Run); }

    std::function<void(ZoReaderObject*)> act;
    int calls = 0;
};

struct ErrorAnswer : LinkHdl {
    explicit ErrorAnswer(ZoReader& reader) { reader.SetParserErrorHdl(Link(this, &ErrorAnswer::GoOn)); }
    long GoOn(ZoReader* /*reader*/) {
        ++calls;
        return 1;
    }
    int calls = 0;
};

class Reader : public testing::Test {
  protected:
    ZoReader& Open(const std::string& text) {
        reader = std::make_unique<ZoReader>(folder.Write("a.txt", text));
        reader->RegisterObject(ZoReaderObject("A", &a));
        reader->RegisterObject(ZoReaderObject("B", &b));
        return *reader;
    }
    // Status and line of each error, as 5@2.
    std::string Errors() const {
        std::string all;
        for (const ZoReaderError* error = reader->GetReaderErrorList().First(); error; error = error->NextConst()) {
            if (!all.empty()) all += ' ';
            all.append(std::to_string(error->status)).append("@").append(std::to_string(error->line));
        }
        return all;
    }
    std::string Process(const std::string& text) {
        a = b = 0;
        EXPECT_EQ(Open(text).DoProcess(false), 1);
        return std::to_string(a) + " " + std::to_string(b) + " [" + Errors() + "]";
    }

    TempFolder folder;
    std::unique_ptr<ZoReader> reader;
    int a = 0;
    int b = 0;
};

TEST_F(Reader, StoresTypedValues) {
    unsigned int id = 0;
    bool flag = false;
    double length = 0.0, whole = 0.0;
    std::string code;
    std::wstring name;
    ZoReader& file = Open("ID 4294967295 FLAG 2 LENGTH 2.5 WHOLE {3}\nCODE \"x y\" NAME \"\xC3\xA4\" A 1");
    file.RegisterObject(ZoReaderObject("ID", &id));
    file.RegisterObject(ZoReaderObject("FLAG", &flag));
    file.RegisterObject(ZoReaderObject("LENGTH", &length));
    file.RegisterObject(ZoReaderObject("WHOLE", &whole));
    file.RegisterObject(ZoReaderObject("CODE", &code));
    file.RegisterObject(ZoReaderObject("NAME", &name));
    file.DoProcess(false);
    EXPECT_EQ(Errors(), "");
    EXPECT_EQ(id, 4294967295u);
    EXPECT_TRUE(flag);
    EXPECT_EQ(length + whole, 5.5);
    EXPECT_EQ(code, "x y");
    EXPECT_EQ(name, L"\u00e4");
    EXPECT_EQ(a, 1);
}

TEST_F(Reader, TopLevelCases) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "0 0 []"},
        {"A 1\nB 2", "1 2 []"},
        {"a 1 A", "0 0 []"},          // end of file in a record is no error
        {"A 1.5 B 2", "0 0 [5@1]"},   // a mismatch ends the reading
        {"A 1\n7 B 2", "1 0 [5@2]"},  // so does a stray value
        {"A 1 7", "1 0 [5@1]"},       // which stays, though the file ends behind it
        {"A 1 } B 2", "1 0 []"},      // as a stray block end, without an error
        {"X 9 A 1 B 2", "1 2 []"},    // an unknown keyword takes one value along
        {"X 9 8 A 1", "0 0 [5@1]"},   // and no second one
        {"X { y { z } { } } A 1 Y {} B 2", "1 2 [0@1 0@1]"},
        {"X } A 1", "0 0 []"},              // its surrounding block end is not its value
        {"A { 1 2 {3} 4 } B 2", "1 2 []"},  // left-over values end with their block
        {"A {\"x\"} B 2", "0 0 [5@1]"},
        {"A 1 \"b", "1 0 [3@1]"},
        {"A 1 X { {", "1 0 [0@1]"},
        {"A 1 X { 12ab } B 2", "1 0 [0@1 4@1]"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(Process(text), expected) << text;
    EXPECT_EQ(Process(std::string("A 1\n\0\x01\xFE junk\nB 2", 16)), "1 2 []");
}

TEST_F(Reader, IgnoresBlockEndsWhenTold) {
    EXPECT_EQ(Open("A 1 } } B 2").DoProcess(true), 1);
    EXPECT_EQ(b, 2);
}

TEST_F(Reader, AMissingFileIsAStreamError) {
    reader = std::make_unique<ZoReader>(folder.Name("none.txt"));
    EXPECT_EQ(reader->DoProcess(false), 1);
    EXPECT_EQ(Errors(), "2@0");
    reader = std::make_unique<ZoReader>(folder.path.wstring());
    reader->DoProcess(false);
    EXPECT_EQ(reader->GetReaderErrorList().First()->status, eZoParserErrorStream);
}

TEST_F(Reader, ANestedBlockSeesItsOwnKeywordsOnly) {
    int inner = 0;
    Handler block([&](ZoReaderObject* object) {
        object->RegisterObject(ZoReaderObject("C", &inner));
        EXPECT_EQ(object->DoProcess(), 1);
    });
    ZoReader& file = Open("BLOCK { A 5 C 3 } A 1 C 9 BLOCK {} B 2");
    file.RegisterObject(ZoReaderObject("BLOCK", block.Bind()));
    file.DoProcess(false);
    EXPECT_EQ(Errors(), "");
    EXPECT_EQ(inner, 3);
    EXPECT_EQ(a, 1);
    EXPECT_EQ(b, 2);
    EXPECT_EQ(block.calls, 2);
    EXPECT_EQ(file.instances.Count(), 1);
}

TEST_F(Reader, AnErrorInABlockEndsTheBlockAndReleasesItsKeywords) {
    Handler values([&](ZoReaderObject* object) {
        ZoStreamParser in = object->GetStreamParser();
        in >> a >> b;
    });
    ZoReader& file = Open("VALUES { 1 x } A 7");
    ErrorAnswer answer(file);
    file.RegisterObject(ZoReaderObject("VALUES", values.Bind()));
    file.DoProcess(true);
    EXPECT_EQ(Errors(), "5@1");
    EXPECT_EQ(file.instances.Count(), 1);
    EXPECT_EQ(a, 7);
}

TEST_F(Reader, WithoutABlockTheLastValueIsLeftAtHand) {
    double x = 0.0;
    Handler pair([&](ZoReaderObject* object) {
        object->GetStreamParser() >> x;
        b = object->GetReader()->GetParser().GetTokenInt();
    });
    Handler mark([](ZoReaderObject*) {});
    Handler block([&](ZoReaderObject* object) {
        object->RegisterObject(ZoReaderObject("MARK", mark.Bind()));
        object->DoProcess();
    });
    ZoReader& file = Open("PAIR 1.5 2 BLOCK { MARK } A 3");
    file.RegisterObject(ZoReaderObject("PAIR", pair.Bind()));
    file.RegisterObject(ZoReaderObject("BLOCK", block.Bind()));
    file.DoProcess(false);
    EXPECT_EQ(x, 1.5);
    EXPECT_EQ(b, 2);
    EXPECT_EQ(mark.calls, 1);
    EXPECT_EQ(a, 3);  // the block of a keyword without a value still ends
}

TEST_F(Reader, ACatchAllGetsRecordsAndTheEndOfTheFileOnce) {
    std::vector<ZoObject> records;
    Handler any([&](ZoReaderObject* object) {
        if (object->GetReader()->GetParser().GetToken().GetType() == eZoTokenEof) return;
        object->GetReader()->GetParser().GetToken(eZoTokenBlockBegin);
        object->ParseForToken();
        records.emplace_back().Read(object);
    });
    ZoReader& file = Open("{ 1 \"Wall\" } {2 \"B\xC3\xB6\" }\nA 4 {3 \"\"}");
    file.RegisterObject(ZoReaderObject(any.Bind()));
    ErrorAnswer answer(file);
    file.DoProcess(false);
    EXPECT_EQ(any.calls, 4);
    EXPECT_EQ(answer.calls, 0);
    EXPECT_EQ(a, 4);
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[1].GetId(), 2u);
    EXPECT_EQ(records[1].GetName(), L"B\u00f6");
    EXPECT_EQ(records[2].GetName(), L"");
}

TEST_F(Reader, SimpleModeGivesEveryTokenToTheFirstObject) {
    int calls = 0;
    Handler any([&](ZoReaderObject*) { ++calls; });
    reader = std::make_unique<ZoReader>(folder.Write("b.txt", "1 KEY { \"x\" }"));
    reader->SetSimpleMode(true);
    EXPECT_EQ(reader->DoProcess(false), 1);
    reader->RegisterObject(ZoReaderObject(any.Bind()));
    EXPECT_EQ(reader->DoProcess(false), 1);
    EXPECT_EQ(calls, 6);  // the end of the file included
    EXPECT_EQ(Errors(), "");
}

TEST_F(Reader, ErrorHandlersDecideWhetherReadingGoesOnButNotAtTheEnd) {
    const std::pair<std::string, std::string> cases[] = {
        {"A \"x B 3\nB 4 5", "3@1 5@2"}, {"A x B 4", "5@1"}, {"7 8 B 4", "5@1 5@1"}, {"12ab B 4", "4@1"}};
    for (const auto& [text, errors] : cases) {
        ZoReader& file = Open(text);
        ErrorAnswer answer(file);
        file.DoProcess(false);
        EXPECT_EQ(b, 4) << text;
        EXPECT_EQ(Errors(), errors) << text;
    }
    std::string line = "A 1 ";
    ZoReader& file = Open(line.append(10'000'000, 'x'));
    ErrorAnswer answer(file);
    file.DoProcess(false);
    EXPECT_EQ(Errors(), "2@1");
}

TEST_F(Reader, UnknownKeywordsCanBeGivenToAHandler) {
    struct Unknown : LinkHdl {
        long Found(ZoReader* reader) {
            words += reader->GetParser().GetToken().GetString();
            return words.size() < 2;
        }
        std::string words;
    } unknown;
    ZoReader& file = Open("X A 1 Y B 2");
    file.SkipUnknownToken(false);
    file.SetUnknownTokenHdl(Link(&unknown, &Unknown::Found));
    file.DoProcess(false);
    EXPECT_EQ(unknown.words, "XY");
    EXPECT_EQ(a, 1);
    EXPECT_EQ(b, 0);
}

TEST_F(Reader, FinishHandlersRunWithTheirBlock) {
    Handler finish([&](ZoReaderObject* object) {
        if (object->GetReader()) b = a;
    });
    Handler inner([&](ZoReaderObject* object) { a = object->GetReader()->GetParser().GetTokenInt(); });
    Handler block([&](ZoReaderObject* object) {
        object->RegisterObject(ZoReaderObject("C", inner.Bind(), finish.Bind()));
        object->DoProcess();
        EXPECT_EQ(b, 0);
    });
    ZoReader& file = Open("BLOCK { C 6 }");
    file.RegisterObject(ZoReaderObject("BLOCK", block.Bind()));
    file.DoProcess(false);
    EXPECT_EQ(b, 6);
    EXPECT_EQ(finish.calls, 2);  // for the temporary, and for the reader's copy
}

TEST_F(Reader, NestingIsBounded) {
    const int million = 1'000'000;
    std::string text, braces(million, '{');
    for (int i = 0; i < million; ++i)
        text += "N {\n";
    text += "\n";
    for (int i = 0; i < million; ++i)
        text += "}\n";
    Handler block([&](ZoReaderObject* object) {
        object->RegisterObject(ZoReaderObject("N", block.Bind()));
        object->DoProcess();
    });
    ZoReader& file = Open(text + "A 1");
    file.RegisterObject(ZoReaderObject("N", block.Bind()));
    file.DoProcess(false);
    EXPECT_EQ(block.calls, ZoReader::kDeepestNesting);
    EXPECT_EQ(file.GetReadErrorCount(), 1);
    EXPECT_EQ(a, 1);
    for (std::size_t at = 8000; at < braces.size(); at += 8000)
        braces[at] = '\n';
    EXPECT_EQ(Process("A 1 X " + braces), "1 0 [0@1]");
    EXPECT_EQ(Process("A 1 " + braces), "1 0 [5@1]");
}

TEST_F(Reader, KeywordsAreCutTo28Characters) {
    const std::string word(40, 'k');
    const ZoReaderObject object(word.c_str(), &a);
    EXPECT_TRUE(object.IsKeyword(word.substr(0, 28).c_str()));
    EXPECT_FALSE(object.IsKeyword(word.c_str()));
}

TEST_F(Reader, LogsItsErrors) {
    struct Lines : ZoLogger {
        int Log(int messageLevel, const wchar_t* text) override {
            lines += std::to_wstring(messageLevel) + text + L"|";
            return 0;
        }
        std::wstring lines;
    } lines;
    ZoMasterLogger master;
    master.SetFormat(L"$mesg");
    master.AddLogger(&lines);
    ZoApplicationLogger::RegisterMasterLogger(&master);
    Process("A 1\n\nB x");
    reader->LogErrorsToApplicationLogger();
    Process("A 1");
    reader->LogErrorsToApplicationLogger();
    ZoApplicationLogger::RegisterMasterLogger(nullptr);
    EXPECT_EQ(lines.lines, L"21 Read Error(s) in " + folder.Name("a.txt") +
                               L":|2 - Line:  00003, Status : ParserErrorNotSpecifiedToken|");
}

}  // namespace
