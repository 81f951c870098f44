# cmake -DSOURCE=… -DTARGET=… -P german_table.cmake: a source file that holds the text table, byte for byte.
file(READ ${SOURCE} table)
file(WRITE ${TARGET}.new "#include \"support/language.h\"\n\nnamespace support {\n\nconst std::string_view german_table = R\"texts(${table})texts\";\n\n}  // namespace support\n")
file(RENAME ${TARGET}.new ${TARGET})
