#pragma once

#include <array>
#include <memory>

#include "zorv/cloud/las/adaptive_model.h"

namespace zorv::las {

/// Statistics of a symbol for each value of another one. Few of those occur, so each is made at its first use.
template <unsigned int kContexts, unsigned int kSymbols>
class SymbolTable {
  public:
    AdaptiveSymbols<kSymbols>& operator[](unsigned int context) {
        auto& model = models[context];
        if (!model) model = std::make_unique<AdaptiveSymbols<kSymbols>>();
        if (!model->IsBegun()) model->Begin(kSymbols);
        return *model;
    }
    void Restart() {
        for (auto& model : models) {
            if (model) model->Forget();
        }
    }

  private:
    std::array<std::unique_ptr<AdaptiveSymbols<kSymbols>>, kContexts> models;
};

}  // namespace zorv::las
