#pragma once

/// Umbrella header: every public header of the library, bottom-up.

#include "zorv/core/alphanumeric_id.h"
#include "zorv/core/array.h"
#include "zorv/core/base_list.h"
#include "zorv/core/flag.h"
#include "zorv/core/link.h"
#include "zorv/core/list.h"
#include "zorv/core/list_node.h"
#include "zorv/core/notifier.h"
#include "zorv/core/number_text.h"
#include "zorv/core/object.h"
#include "zorv/core/quoted_tokens.h"
#include "zorv/core/sort_helper.h"
#include "zorv/core/stopwatch.h"
#include "zorv/core/string_tools.h"
#include "zorv/core/text_conversion.h"
#include "zorv/core/time_text.h"
#include "zorv/core/units.h"
#include "zorv/math/plain_matrix.h"
