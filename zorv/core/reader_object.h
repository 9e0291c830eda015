#pragma once

#include <cstdint>
#include <string>

#include "zorv/core/link.h"
#include "zorv/core/list_node.h"
#include "zorv/core/parser.h"
#include "zorv/core/stream_parser.h"
#include "zorv/export.h"

class ZoReader;

/// One keyword of a text file and what is done when it is found: store the value behind it in a variable, or call a
/// handler.
///
/// A handler gets the ZoReaderObject* with the first token behind the keyword at hand, or behind the `{` when a block
/// was opened. For `KEY { sub-keywords }` it registers its keywords on that object and calls DoProcess; for
/// `KEY { v1 v2 }` it reads its values and leaves the `}` at hand; without a block it leaves its last value at hand.
class ZORV_API ZoReaderObject : public TZoListnode<ZoReaderObject> {
  public:
    static constexpr int kKeywordSize = 29;                   ///< with the terminator
    static constexpr const char* kCatchAll = "_NOT_DEFINED";  ///< the keyword of a catch-all

    ZoReaderObject();
    ZoReaderObject(const char* word, int* value);
    ZoReaderObject(const char* word, unsigned int* value);
    ZoReaderObject(const char* word, bool* value);  ///< an integer; stores whether it is not 0
    ZoReaderObject(const char* word, double* value);
    ZoReaderObject(const char* word, std::string* value);
    ZoReaderObject(const char* word, std::wstring* value);
    ZoReaderObject(const char* word, const Link& found);
    /// `finished` is called with this object from the destructor of every copy: of a temporary, and of the reader's own
    /// copy at the end of its block or of the reader, which its target thus outlives.
    ZoReaderObject(const char* word, const Link& found, const Link& finished);
    /// Catch-all: called for every token that is neither a keyword nor `}`, end of file included.
    explicit ZoReaderObject(const Link& found);
    ZoReaderObject(const ZoReaderObject&) = default;
    ZoReaderObject& operator=(const ZoReaderObject&) = default;
    ~ZoReaderObject() override;

    /// Exact comparison.
    bool IsKeyword(const char* word) const;
    ZoReader* GetReader() const { return reader; }
    ZoStreamParser GetStreamParser() const;
    /// Binds one more keyword in the block at hand; returns the reader's own copy of it.
    ZoReaderObject* RegisterObject(const ZoReaderObject& object);
    /// Reads the block at hand up to its `}`, which stays at hand, beginning with the token at hand. Returns 1.
    int DoProcess();
    /// Advances to the next token, unless the parser was told to skip one advance.
    void ParseForToken();

    ZoReader* reader = nullptr;
    char keyword[kKeywordSize] = {};
    void* target = nullptr;
    std::int32_t targetType = 0;  ///< an eZoTokentype
    std::int32_t isBool = 0;
    Link handler;
    Link finishHandler;

  private:
    friend class ZoReader;

    ZoReaderObject(const char* word, void* value, eZoTokentype type);
    void SetKeyword(const char* word);
    /// Stores the value at hand or calls the handler.
    void KeywordFound();
};
