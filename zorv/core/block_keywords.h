#pragma once

#include <deque>
#include <functional>
#include <utility>

#include "zorv/core/link.h"
#include "zorv/core/reader.h"
#include "zorv/core/reader_object.h"
#include "zorv/core/shaped_value.h"

namespace zorv::detail {

/// The keywords of one block and where their values go, for a record that has many:
///
///     BlockKeywords keywords(object);
///     keywords.Value("LAYER", &layer).Record("DIGIREGION", digiRegion);
///     keywords.Process();
class BlockKeywords {
  public:
    explicit BlockKeywords(ZoReaderObject* block) : object(block) {}
    BlockKeywords(const BlockKeywords&) = delete;
    BlockKeywords& operator=(const BlockKeywords&) = delete;

    /// Stores the value behind the keyword.
    template <class T>
    BlockKeywords& Value(const char* keyword, T* target) {
        object->RegisterObject(ZoReaderObject(keyword, target));
        return *this;
    }
    /// An enumerator of 32 bits.
    template <class T>
    BlockKeywords& Enumerator(const char* keyword, T& target) {
        return Call(keyword, [&target](ZoReaderObject* value) {
            target = static_cast<T>(value->GetReader()->GetParser().GetTokenInt());
        });
    }
    /// Calls a function with the first token behind the keyword, or behind its `{`, at hand.
    BlockKeywords& Call(const char* keyword, std::function<void(ZoReaderObject*)> read) {
        handlers.emplace_back(std::move(read));
        object->RegisterObject(ZoReaderObject(keyword, Link(&handlers.back(), &Handler::Found)));
        return *this;
    }
    /// Hands the value to the Read of a record.
    template <class T>
    BlockKeywords& Record(const char* keyword, T& record) {
        return Call(keyword, [&record](ZoReaderObject* value) { record.Read(value); });
    }

    /// The same for a matrix or vector of a fixed shape, which stays when the value has another.
    template <class T>
    BlockKeywords& Shaped(const char* keyword, T& target) {
        return Call(keyword, [&target](ZoReaderObject* value) { ReadShaped(target, value); });
    }

    /// Reads up to the end of the block.
    void Process() { object->DoProcess(); }

  private:
    struct Handler : LinkHdl {
        explicit Handler(std::function<void(ZoReaderObject*)> function) : read(std::move(function)) {}
        long Found(ZoReaderObject* value) {
            read(value);
            return 1;
        }
        std::function<void(ZoReaderObject*)> read;
    };

    ZoReaderObject* object;
    std::deque<Handler> handlers;  // addresses stay
};

/// Moves behind the `{` at hand; throws ZoParserStatus at any other token.
inline void TakeBlockBegin(ZoReaderObject* object) {
    object->GetReader()->GetParser().GetToken(eZoTokenBlockBegin);
    object->ParseForToken();
}

/// A block inside a run of tokens: takes its `{`, lets `read` take what it holds, and moves behind its `}`.
template <class ReadContent>
void ReadInBraces(ZoReaderObject* object, ReadContent read) {
    TakeBlockBegin(object);
    read();
    object->GetReader()->GetParser().GetToken(eZoTokenBlockEnd);
    object->ParseForToken();
}

}  // namespace zorv::detail
