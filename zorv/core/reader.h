#pragma once

#include <cstdint>
#include <fstream>
#include <string>

#include "zorv/core/link.h"
#include "zorv/core/list.h"
#include "zorv/core/parser.h"
#include "zorv/core/reader_object.h"
#include "zorv/core/stream_parser.h"
#include "zorv/export.h"

/// A parser status as it was when an error occurred.
class ZORV_API ZoReaderError : public ZoParserStatus, public TZoListnode<ZoReaderError> {
  public:
    ZoReaderError() = default;
    explicit ZoReaderError(const ZoParserStatus& error) : ZoParserStatus(error) {}
};

/// The errors of a reader, which it owns, in the order in which they were met.
class ZORV_API ZoReaderErrorList : public TZoListHeader<ZoReaderError> {};

/// The keywords of one block. A nested block sees none of the outer ones.
class ZORV_API ZoReaderInstance : public TZoListnode<ZoReaderInstance>, public TZoListHeader<ZoReaderObject> {
  public:
    explicit ZoReaderInstance(ZoReader* owner) : reader(owner) {}

    void Dump() override { TZoListHeader<ZoReaderObject>::Dump(); }

    ZoReader* reader = nullptr;
};

/// Reads one file in the tagged text syntax: walks its tokens and hands each keyword to the object registered for it.
///
///     ZoReader reader(L"project.pro");
///     reader.RegisterObject(ZoReaderObject("PHOTO", Link(this, &Project::ReadPhoto)));
///     reader.DoProcess(false);
///     reader.LogErrorsToApplicationLogger();
///
/// Nothing is thrown out of DoProcess: errors are collected with their lines, and what was read so far stays. The end
/// of the file is no error, wherever it comes. Reading goes on behind a block's own `}` even if its handler left
/// values over.
class ZORV_API ZoReader {
  public:
    /// Blocks that are read inside of one another; deeper ones are passed with an error.
    static constexpr int kDeepestNesting = 256;

    /// Opens the file. A file that cannot be opened gives one error with eZoParserErrorStream when it is read.
    explicit ZoReader(const std::wstring& file);
    ZoReader(const ZoReader&) = delete;
    ZoReader& operator=(const ZoReader&) = delete;

    /// Called for an unknown keyword when those are not skipped, and for every error; each calls its handler with
    /// this reader. Non-zero goes on reading, 0 (also without a handler) ends the block. At the end of the file and
    /// after a failure of the stream the reading ends in any case.
    virtual int UnknownTokenFound();
    virtual int ParserError();
    virtual ~ZoReader();

    /// Binds a keyword in the block at hand and returns the reader's own copy of the object.
    ZoReaderObject* RegisterObject(const ZoReaderObject& object);

    /// Reads up to the `}` of the block at hand or to the end of the file. With `ignoreBlockEnd` a stray `}` is
    /// passed. Returns 1; see GetReadErrorCount.
    int DoProcess(bool ignoreBlockEnd);

    /// In simple mode every token goes to the one object that is registered, without looking at keywords.
    void SetSimpleMode(bool on) { simpleMode = on; }
    /// Whether unknown keywords are passed (the default) or given to UnknownTokenFound. A block that is passed with its
    /// keyword stands among the errors.
    void SkipUnknownToken(bool on) { skipUnknownToken = on; }
    void SetParserErrorHdl(const Link& handler) { parserErrorHandler = handler; }
    void SetUnknownTokenHdl(const Link& handler) { unknownTokenHandler = handler; }

    /// With the `{` of a block at hand: records an error and moves to its `}`, or to the end of the file.
    void SkipCurrentBlock();
    /// Advances to the next token, unless the parser was told to skip one advance.
    void ParseForToken();

    ZoParser& GetParser() { return parser; }
    std::istream& GetStream() { return stream; }
    ZoStreamParser GetStreamParser() { return {&stream, &parser}; }
    int GetReadErrorCount() const { return errors.Count(); }
    const ZoReaderErrorList& GetReaderErrorList() const { return errors; }
    /// Logs the errors with their lines at level 2; nothing when there are none.
    void LogErrorsToApplicationLogger() const;

    std::wstring fileName;
    std::ifstream stream;
    ZoParser parser;
    bool skipUnknownToken = true;
    bool simpleMode = false;
    TZoListHeader<ZoReaderInstance> instances;  ///< a stack
    ZoReaderInstance* currentInstance = nullptr;
    ZoReaderObject* currentObject = nullptr;  ///< of the last keyword; null for an unknown one
    Link unknownTokenHandler;
    Link parserErrorHandler;
    ZoReaderErrorList errors;

  private:
    class BlockScope;
    class HandlerScope;

    /// Takes steps until one answers false, and turns what they throw into entries of `errors`.
    template <class Step>
    void Repeat(Step step);
    int DoProcessSimpleMode();
    // The steps of the loop; each tells whether to go on.
    bool ReadToken(bool ignoreBlockEnd, bool& haveToken);
    bool ReadKnown(ZoReaderObject* object, bool& haveToken);
    bool ReadUnknown(bool& haveToken);
    bool ReadOther();

    /// The object of a keyword in the block at hand, or null.
    ZoReaderObject* FindObject(const char* keyword) const;
    void ReadBlock(ZoReaderObject* object);
    /// Moves to the `}` of the block with that depth inside, or to the end of the file.
    void PassBlock(std::int64_t inside);
    bool IsAtEnd() const;
    ZoReaderError* AddError(const ZoParserStatus& error, eZoParserStatus kind);
    bool AskParserError();
    bool GoesOnAfter(const ZoParserStatus& error);
    void ReportEnd();
    void NewInstance();
    void ReleaseInstance();

    int nesting = 0;   // of DoProcess
    int runs = 0;      // of DoProcess, in all
    int failures = 0;  // errors that ended a step, other than the end of the file
};
