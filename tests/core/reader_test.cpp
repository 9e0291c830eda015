#include "zorv/core/reader.h"

#include <functional>
#include <sstream>

#include "tests/support/recorded_log.h"
#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

namespace {

// Binds a lambda to a keyword, or to the errors of a reader.
template <class Argument>
struct Handler : LinkHdl {
    explicit Handler(std::function<long(Argument*)> call) : act(std::move(call)) {}
    long Run(Argument* argument) {
        ++calls;
        return act(argument);
    }
    Link Bind() { return Link(this, &Handler::Run); }

    std::function<long(Argument*)> act;
    int calls = 0;
};
using Found = Handler<ZoReaderObject>;
using Asked = Handler<ZoReader>;

class Reader : public testing::Test {
  protected:
    ZoReader& Open(const std::string& text) {
        a = b = 0;
        reader = std::make_unique<ZoReader>(folder.Write("a.txt", text));
        reader->RegisterObject(ZoReaderObject("A", &a));
        reader->RegisterObject(ZoReaderObject("B", &b));
        return *reader;
    }
    // What A and B hold, then status and line of each error: 1 2 5@3.
    std::string Process(bool ignoreBlockEnd = false) {
        EXPECT_EQ(reader->DoProcess(ignoreBlockEnd), 1);
        EXPECT_EQ(reader->instances.Count(), 1);
        std::ostringstream all;
        all << a << ' ' << b;
        for (const ZoReaderError* error = reader->GetReaderErrorList().First(); error; error = error->NextConst())
            all << ' ' << error->status << '@' << error->line;
        return all.str();
    }

    TempFolder folder;
    std::unique_ptr<ZoReader> reader;
    int a = 0, b = 0;
    Asked goOn{[](ZoReader*) { return 1; }};
};

TEST_F(Reader, StoresTypedValues) {
    unsigned int id = 0;
    bool flag = false;
    double length = 0.0, whole = 0.0;
    std::string code;
    std::wstring name;
    ZoReader& file = Open("ID 4294967295 FLAG 2 LENGTH 2.5 WHOLE {3}\nCODE \"x y\" NAME \"\xC3\xA4\" A 1");
    for (const ZoReaderObject& object :
         {ZoReaderObject("ID", &id), ZoReaderObject("FLAG", &flag), ZoReaderObject("LENGTH", &length),
          ZoReaderObject("WHOLE", &whole), ZoReaderObject("CODE", &code), ZoReaderObject("NAME", &name)})
        file.RegisterObject(object);
    EXPECT_EQ(Process(), "1 0");
    EXPECT_EQ(id, 4294967295u);
    EXPECT_TRUE(flag);
    EXPECT_EQ(length + whole, 5.5);
    EXPECT_EQ(code, "x y");
    EXPECT_EQ(name, L"\u00e4");
}

TEST_F(Reader, WalksTheTopLevel) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "0 0"},
        {"A 1\nB 2", "1 2"},
        {"a 1 A", "0 0"},                // end of file in a record is no error
        {"A 1.5 B 2", "0 0 5@1"},        // a mismatch ends the reading
        {"A 1\n7 B 2", "1 0 5@2"},       // so does a stray value
        {"A 1 7", "1 0 5@1"},            // which stays, though the file ends behind it
        {"A 1 } B 2", "1 0"},            // as a stray block end, without an error
        {"X 9 A 1 B 2", "1 2"},          // an unknown keyword takes one value along
        {"X 9 8 A 1", "0 0 5@1"},        // and no second one
        {"X } A 1", "0 0"},              // the end of the surrounding block is not its value
        {"A { 1 2 {3} 4 } B 2", "1 2"},  // left-over values end with their block
        {"X { y { z } { } } A 1 Y {} B 2", "1 2 0@1 0@1"},
        {"A {\"x\"} B 2", "0 0 5@1"},
        {"A 1 \"b", "1 0 3@1"},
        {"A 1 X { {", "1 0 0@1"},
        {"A 1 X { 12ab } B 2", "1 0 0@1 4@1"},
        {std::string("A 1\n\0\x01\xFE junk\nB 2", 16), "1 2"},
    };
    for (const auto& [text, expected] : cases) {
        Open(text);
        EXPECT_EQ(Process(), expected) << text;
    }
    Open("A 1 } } B 2");
    EXPECT_EQ(Process(true), "1 2");
}

TEST_F(Reader, WhatCannotBeReadIsAStreamError) {
    Open("");
    for (const std::wstring& name : {folder.Name("none.txt"), folder.path.wstring()}) {
        reader = std::make_unique<ZoReader>(name);
        EXPECT_EQ(Process().substr(0, 5), "0 0 2");
    }
}

TEST_F(Reader, ANestedBlockSeesItsOwnKeywordsOnly) {
    int inner = 0;
    Found finish([&](ZoReaderObject* object) {
        object->RegisterObject(ZoReaderObject("D", &b));  // in the outer block, which then is at hand
        return b = object->GetReader() ? inner : 0;
    });
    Found value([&](ZoReaderObject* object) { return inner = object->GetReader()->GetParser().GetTokenInt(); });
    Found block([&](ZoReaderObject* object) {
        object->RegisterObject(ZoReaderObject("C", value.Bind(), finish.Bind()));
        EXPECT_EQ(object->DoProcess(), 1);
        return b == 0;
    });
    Open("BLOCK { A 5 C 3 } A 1 C 9 D 4").RegisterObject(ZoReaderObject("BLOCK", block.Bind()));
    EXPECT_EQ(Process(), "1 4");
    EXPECT_EQ(inner, 3);
    EXPECT_EQ(finish.calls, 2);  // for the temporary, and for the reader's copy at the end of its block
}

TEST_F(Reader, AnErrorInABlockReleasesItsKeywords) {
    Found values([&](ZoReaderObject* object) {
        object->GetStreamParser() >> a >> b;
        return 1;
    });
    ZoReader& file = Open("VALUES { 1 x } A 7");
    file.SetParserErrorHdl(goOn.Bind());
    file.RegisterObject(ZoReaderObject("VALUES", values.Bind()));
    EXPECT_EQ(Process(true), "7 0 5@1");
}

TEST_F(Reader, WithoutABlockTheLastValueIsLeftAtHand) {
    double x = 0.0;
    Found pair([&](ZoReaderObject* object) {
        object->GetStreamParser() >> x;
        return b = object->GetReader()->GetParser().GetTokenInt();
    });
    Found mark([](ZoReaderObject*) { return 1; });
    Found block([&](ZoReaderObject* object) {
        object->RegisterObject(ZoReaderObject("MARK", mark.Bind()));
        return object->DoProcess();
    });
    ZoReader& file = Open("PAIR 1.5 2 BLOCK { MARK } A 3");
    file.RegisterObject(ZoReaderObject("PAIR", pair.Bind()));
    file.RegisterObject(ZoReaderObject("BLOCK", block.Bind()));
    EXPECT_EQ(Process(), "3 2");  // and the block of a keyword without a value ends
    EXPECT_EQ(x + mark.calls, 2.5);
}

TEST_F(Reader, KeywordsBoundWithoutABlockGoWithTheirHandler) {
    int inner = 0;
    Found version([&](ZoReaderObject* object) {
        object->RegisterObject(ZoReaderObject("LATER", &b));  // for the block around it, which stays
        return 1;
    });
    Found record([&](ZoReaderObject* object) {
        object->RegisterObject(ZoReaderObject("C", &inner));
        return object->DoProcess();
    });
    ZoReader& file = Open("VERSION 2 RECORD C 1 7 C 5 LATER 3");  // the 7 ends the record
    file.RegisterObject(ZoReaderObject("VERSION", version.Bind()));
    file.RegisterObject(ZoReaderObject("RECORD", record.Bind()));
    EXPECT_EQ(Process(), "0 3 5@1");
    EXPECT_EQ(inner, 1);
}

TEST_F(Reader, ACatchAllGetsRecordsAndTheEndOfTheFileOnce) {
    std::vector<ZoObject> records;
    Found any([&](ZoReaderObject* object) {
        ZoParser& parser = object->GetReader()->GetParser();
        if (parser.GetToken().GetType() == eZoTokenEof) return 1;
        parser.GetToken(eZoTokenBlockBegin);
        object->ParseForToken();
        return records.emplace_back().Read(object);
    });
    ZoReader& file = Open("{ 1 \"Wall\" } {2 \"B\xC3\xB6\" }\nA 4 {3 \"\"}");
    file.RegisterObject(ZoReaderObject(any.Bind()));
    file.SetParserErrorHdl(goOn.Bind());
    EXPECT_EQ(Process(), "4 0");
    EXPECT_EQ(any.calls, 4);
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(std::tuple(records[1].GetId(), records[1].GetName() + records[2].GetName()), std::tuple(2u, L"B\u00f6"));
}

TEST_F(Reader, SimpleModeGivesEveryTokenToTheFirstObject) {
    Found any([&](ZoReaderObject*) { return 1; });
    Open("");
    reader = std::make_unique<ZoReader>(folder.Write("b.txt", "1 KEY { \"x\" }"));
    reader->SetSimpleMode(true);
    EXPECT_EQ(Process(), "0 0");
    reader->RegisterObject(ZoReaderObject(any.Bind()));
    EXPECT_EQ(Process(), "0 0");
    EXPECT_EQ(any.calls, 6);  // the end of the file included
}

TEST_F(Reader, ErrorHandlersDecideWhetherReadingGoesOnButNotAtTheEnd) {
    std::string longLine = "A 1 ";
    const std::pair<std::string, std::string> cases[] = {{"A \"x B 3\nB 4 5", "0 4 3@1 5@2"},
                                                         {"A x B 4", "0 4 5@1"},
                                                         {"7 8 B 4", "0 4 5@1 5@1"},
                                                         {"12ab B 4", "0 4 4@1"},
                                                         {longLine.append(10'000'000, 'x'), "1 0 2@1"}};
    for (const auto& [text, expected] : cases) {
        Open(text).SetParserErrorHdl(goOn.Bind());
        EXPECT_EQ(Process(), expected);
    }
}

TEST_F(Reader, UnknownKeywordsCanBeGivenToAHandler) {
    std::string words;
    Asked unknown([&](ZoReader* source) {
        words += source->GetParser().GetToken().GetString();
        return words.size() < 2;
    });
    ZoReader& file = Open("X A 1 Y B 2");
    file.SkipUnknownToken(false);
    file.SetUnknownTokenHdl(unknown.Bind());
    EXPECT_EQ(Process(), "1 0");
    EXPECT_EQ(words, "XY");
}

TEST_F(Reader, NestingIsBounded) {
    std::string nested, braces = "A 1 X ";
    for (int i = 0; i < 1'000'000; ++i) {
        nested += "N {\n";
        braces += i % 8000 == 0 ? "\n{" : "{";
    }
    for (int i = 0; i < 1'000'000; ++i)
        nested += "}\n";
    Found block([&](ZoReaderObject* object) {
        object->RegisterObject(ZoReaderObject("N", block.Bind()));
        return object->DoProcess();
    });
    Open(nested + "A 1").RegisterObject(ZoReaderObject("N", block.Bind()));
    EXPECT_EQ(Process(), "1 0 5@257");
    EXPECT_EQ(block.calls, ZoReader::kDeepestNesting);
    Open(braces);
    EXPECT_EQ(Process(), "1 0 0@2");
}

TEST_F(Reader, LogsItsErrors) {
    const RecordedLog log;
    for (const char* text : {"A 1\n\nB x", "A 1"}) {
        Open(text).DoProcess(false);
        reader->LogErrorsToApplicationLogger();
    }
    EXPECT_EQ(log.lines, (std::vector<std::wstring>{L"2 1 Read Error(s) in " + folder.Name("a.txt") + L":",
                                                    L"2  - Line:  00003, Status : ParserErrorNotSpecifiedToken"}));
}

}  // namespace
