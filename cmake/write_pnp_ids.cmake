# cmake -DLIST=FILE -DTEMPLATE=FILE -DOUTPUT=FILE -P write_pnp_ids.cmake: turns the list of PNP ids (a line each: id, tab,
# name) into a source.
file(READ ${LIST} ENTRIES)
string(REPLACE "\\" "\\\\" ENTRIES "${ENTRIES}")
string(REPLACE "\"" "\\\"" ENTRIES "${ENTRIES}")
string(REGEX REPLACE "([A-Za-z@]+)\t([^\n]+)\n" "    {\"\\1\", \"\\2\"},\n" ENTRIES "${ENTRIES}")
configure_file(${TEMPLATE} ${OUTPUT} @ONLY)
