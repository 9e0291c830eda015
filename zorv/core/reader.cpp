#include "zorv/core/reader.h"

#include <locale>
#include <memory>

#include "zorv/core/logger.h"
#include "zorv/core/platform/files.h"

/// A level of keywords for as long as a block is read, exceptions included.
class ZoReader::BlockScope {
  public:
    explicit BlockScope(ZoReader& of) : reader(of), object(of.currentObject) { reader.NewInstance(); }
    ~BlockScope() {
        reader.currentObject = object;
        reader.ReleaseInstance();
    }
    BlockScope(const BlockScope&) = delete;
    BlockScope& operator=(const BlockScope&) = delete;

  private:
    ZoReader& reader;
    ZoReaderObject* object;
};

/// A handler that reads the rest of the block around it as if it were its own, for want of a `{`, binds keywords there
/// that lead to what nobody keeps after it. They go when it returns.
class ZoReader::HandlerScope {
  public:
    explicit HandlerScope(ZoReader& of)
        : reader(of), instance(of.currentInstance), last(instance->Last()), object(of.currentObject), runs(of.runs) {}
    ~HandlerScope() {
        if (reader.runs == runs) return;
        while (instance->Last() != last)
            delete instance->SubtractLast();
        reader.currentObject = object;
    }
    HandlerScope(const HandlerScope&) = delete;
    HandlerScope& operator=(const HandlerScope&) = delete;

  private:
    ZoReader& reader;
    ZoReaderInstance* instance;
    ZoReaderObject* last;
    ZoReaderObject* object;
    int runs;
};

namespace {

class NestingScope {
  public:
    explicit NestingScope(int& counter) : nesting(counter) { ++nesting; }
    ~NestingScope() { --nesting; }
    NestingScope(const NestingScope&) = delete;
    NestingScope& operator=(const NestingScope&) = delete;

  private:
    int& nesting;
};

}  // namespace

ZoReader::ZoReader(const std::wstring& file) : fileName(file) {
    stream.imbue(std::locale::classic());
    stream.open(zorv::detail::NativePath(file));
    NewInstance();
}

ZoReader::~ZoReader() {
    // Finish handlers run here, while the rest of the reader is there.
    currentInstance = nullptr;
    currentObject = nullptr;
    instances.Destroy();
}

int ZoReader::UnknownTokenFound() {
    return unknownTokenHandler.Call(this);
}

int ZoReader::ParserError() {
    return parserErrorHandler.Call(this);
}

ZoReaderObject* ZoReader::RegisterObject(const ZoReaderObject& object) {
    if (!currentInstance) return nullptr;
    ZoReaderObject* copy = currentInstance->Add(object);
    copy->reader = this;
    return copy;
}

int ZoReader::DoProcess(bool ignoreBlockEnd) {
    if (!currentInstance) return 1;
    ++runs;
    if (nesting == kDeepestNesting) {
        parser.SkipNextParse(false);
        AddError(parser.status, eZoParserErrorNotSpecifiedToken);
        return 1;
    }
    if (simpleMode) return DoProcessSimpleMode();
    bool haveToken = false;
    Repeat([&] { return ReadToken(ignoreBlockEnd, haveToken); });
    return 1;
}

int ZoReader::DoProcessSimpleMode() {
    ZoReaderObject* object = currentInstance->First();
    if (!object) return 1;
    currentObject = object;
    Repeat([this, object] {
        ParseForToken();
        const bool atEnd = IsAtEnd();
        object->KeywordFound();
        return !atEnd;
    });
    return 1;
}

template <class Step>
void ZoReader::Repeat(Step step) {
    const NestingScope scope(nesting);
    bool going = parser.status.status != eZoParserStatusEof && parser.status.status != eZoParserErrorStream;
    while (going) {
        try {
            going = step();
        } catch (const ZoParserStatus& error) {
            going = GoesOnAfter(error);
        }
    }
}

bool ZoReader::ReadToken(bool ignoreBlockEnd, bool& haveToken) {
    if (haveToken) {
        haveToken = false;
    } else {
        ParseForToken();
    }
    if (parser.token.type == eZoTokenBlockEnd) return ignoreBlockEnd;
    if (parser.token.type != eZoTokenKeyword) return ReadOther();
    currentObject = FindObject(parser.token.text);
    return currentObject ? ReadKnown(currentObject, haveToken) : ReadUnknown(haveToken);
}

ZoReaderObject* ZoReader::FindObject(const char* keyword) const {
    for (ZoReaderObject* object = currentInstance->First(); object; object = object->Next()) {
        if (object->IsKeyword(keyword)) return object;
    }
    return nullptr;
}

bool ZoReader::ReadKnown(ZoReaderObject* object, bool& haveToken) {
    const std::int64_t depth = parser.blockDepth;
    ParseForToken();
    if (parser.token.type == eZoTokenBlockBegin) {
        ReadBlock(object);
        haveToken = parser.token.type == eZoTokenKeyword || parser.token.type == eZoTokenBlockEnd;
    } else {
        {
            const HandlerScope scope(*this);
            object->KeywordFound();
        }
        // The `}` of the block around a keyword without a value is not the keyword's.
        haveToken = parser.token.type == eZoTokenBlockEnd && parser.blockDepth < depth;
    }
    return true;
}

void ZoReader::ReadBlock(ZoReaderObject* object) {
    const std::int64_t inside = parser.blockDepth;
    const int failuresBefore = failures;
    ParseForToken();
    {
        BlockScope scope(*this);
        object->KeywordFound();
    }
    if (failures == failuresBefore) {
        parser.SkipNextParse(false);
        PassBlock(inside);
        const bool atOwnEnd = parser.token.type == eZoTokenBlockEnd && parser.blockDepth == inside - 1;
        if (!atOwnEnd) return;
    }
    ParseForToken();
}

bool ZoReader::ReadUnknown(bool& haveToken) {
    if (!skipUnknownToken) return UnknownTokenFound() != 0;
    ParseForToken();
    if (parser.token.type == eZoTokenBlockBegin) {
        SkipCurrentBlock();
    } else {
        haveToken = parser.token.type == eZoTokenBlockEnd;
    }
    return true;
}

bool ZoReader::ReadOther() {
    const bool atEnd = IsAtEnd();
    if (ZoReaderObject* object = FindObject(ZoReaderObject::kCatchAll)) {
        currentObject = object;
        const HandlerScope scope(*this);
        object->KeywordFound();
        return !atEnd;
    }
    if (!atEnd) {
        ZoParserStatus error = parser.status;
        error.status = eZoParserErrorNotSpecifiedToken;
        throw error;
    }
    ReportEnd();
    return false;
}

void ZoReader::ReportEnd() {
    // A handler that counts on being told finds the end among the errors, where it does not stay.
    const ZoReaderError* end = AddError(parser.status, eZoParserErrorNotSpecifiedToken);
    AskParserError();
    if (errors.Last() == end) delete errors.SubtractLast();
}

bool ZoReader::IsAtEnd() const {
    return parser.token.type == eZoTokenEof;
}

ZoReaderError* ZoReader::AddError(const ZoParserStatus& error, eZoParserStatus kind) {
    ZoReaderError record(error);
    record.status = kind;
    return errors.Add(record);
}

bool ZoReader::AskParserError() {
    try {
        return ParserError() != 0;
    } catch (const ZoParserStatus&) {
        return false;
    }
}

bool ZoReader::GoesOnAfter(const ZoParserStatus& error) {
    if (error.status == eZoParserStatusEof) return false;
    ++failures;
    AddError(error, error.status);
    const bool going = AskParserError();
    return going && !IsAtEnd() && error.status != eZoParserErrorStream && parser.status.status != eZoParserErrorStream;
}

void ZoReader::SkipCurrentBlock() {
    AddError(parser.status, parser.status.status);
    PassBlock(parser.blockDepth);
}

void ZoReader::PassBlock(std::int64_t inside) {
    while (parser.blockDepth >= inside && !IsAtEnd())
        ParseForToken();
}

void ZoReader::LogErrorsToApplicationLogger() const {
    constexpr int kReadErrorLevel = 2;
    const int count = GetReadErrorCount();
    if (count == 0) return;
    ZoApplicationLogger::Log(kReadErrorLevel, L"%d Read Error(s) in %s:", count, fileName.c_str());
    for (const ZoReaderError* error = errors.First(); error; error = error->NextConst()) {
        ZoApplicationLogger::Log(kReadErrorLevel, L" - Line: % 06d, Status : %s", error->line,
                                 GetZoParserStatusText(error->status).c_str());
    }
}

void ZoReader::ParseForToken() {
    GetStreamParser().ParseForToken();
}

void ZoReader::NewInstance() {
    currentInstance = instances.Add(new ZoReaderInstance(this));
}

void ZoReader::ReleaseInstance() {
    if (!instances.CountMoreThan(1)) return;
    // Finish handlers find the outer block at hand.
    const std::unique_ptr<ZoReaderInstance> done(instances.Subtract(currentInstance));
    currentInstance = instances.Last();
}
