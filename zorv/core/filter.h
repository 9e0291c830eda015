#pragma once

#include <memory>

#include "zorv/export.h"

class ZoObject;

/// A question that each record passes or fails. Filters combine to trees, built with new and deleted at the root:
///
///     std::unique_ptr<ZoFilter> filter(new ZoAndFilter(new ZoTestFilter(&IsVisible), new ZoNotFilter(...)));
///
/// A missing operand or function counts as one that fails.
class ZORV_API ZoFilter {
  public:
    virtual ~ZoFilter() = default;
    /// Non-zero for a pass.
    virtual unsigned int Test(const ZoObject* object) const = 0;
};

/// Two filters, which it owns. Passes when either does.
class ZORV_API ZoBinaryFilter : public ZoFilter {
  public:
    ZoBinaryFilter(const ZoFilter* first, const ZoFilter* second) : left(first), right(second) {}
    ZoBinaryFilter(const ZoBinaryFilter&) = delete;
    ZoBinaryFilter& operator=(const ZoBinaryFilter&) = delete;

    unsigned int Test(const ZoObject* object) const override;

    std::unique_ptr<const ZoFilter> left;
    std::unique_ptr<const ZoFilter> right;
};

/// Passes when either passes; the right one is asked only when the left one fails.
class ZORV_API ZoOrFilter : public ZoBinaryFilter {
  public:
    using ZoBinaryFilter::ZoBinaryFilter;
};

/// Passes when both pass; the right one is asked only when the left one passes.
class ZORV_API ZoAndFilter : public ZoBinaryFilter {
  public:
    using ZoBinaryFilter::ZoBinaryFilter;
    unsigned int Test(const ZoObject* object) const override;
};

/// Passes when its operand, which it owns, fails.
class ZORV_API ZoNotFilter : public ZoFilter {
  public:
    explicit ZoNotFilter(const ZoFilter* filter) : operand(filter) {}
    ZoNotFilter(const ZoNotFilter&) = delete;
    ZoNotFilter& operator=(const ZoNotFilter&) = delete;

    unsigned int Test(const ZoObject* object) const override;

    std::unique_ptr<const ZoFilter> operand;
};

/// Asks a function and returns its result.
class ZORV_API ZoTestFilter : public ZoFilter {
  public:
    using Function = unsigned int (*)(const ZoObject*);

    explicit ZoTestFilter(Function test) : function(test) {}
    unsigned int Test(const ZoObject* object) const override { return function ? function(object) : 0; }

    Function function;
};

/// Takes every object.
class ZORV_API ZoTrueFilter : public ZoFilter {
  public:
    unsigned int Test(const ZoObject*) const override { return 1; }
};

/// Takes no object.
class ZORV_API ZoFalseFilter : public ZoFilter {
  public:
    unsigned int Test(const ZoObject*) const override { return 0; }
};
