#pragma once

#include "batch/json_writer.h"
#include "edid/facts/cta_facts.h"

namespace desk::batch {

/// Writes the members for the data blocks of CTA-861 into an open object.
void write_cta_facts(json_writer& json, const facts::cta_facts& cta);

} // namespace desk::batch
