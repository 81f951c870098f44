# cmake -DSOURCE=… -DTARGET=… -P windows_text.cmake: writes a UTF-8 text the way Windows programs of this age keep theirs,
# in code page 1252 with CR LF.
execute_process(
  COMMAND iconv -f UTF-8 -t CP1252 ${SOURCE}
  COMMAND sed "s/$/\r/"
  OUTPUT_FILE ${TARGET}.new
  COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${TARGET}.new ${TARGET})
