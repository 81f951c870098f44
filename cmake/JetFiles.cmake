# Databases that were written by the Jet engine itself (version 4), from npm packages that contain them as examples or
# test data. JET_FILES_DIR becomes a folder with fruit.mdb, users.mdb and states.mdb.
set(JET_FILES_DIR ${CMAKE_BINARY_DIR}/jet_files)
npm_package(mdb-0.1.0 mdb 0.1.0 60975b4ff8ea708c99aae2d700acd1585f528d2f2c66db12bb924bd6f4bd5e77 fruit)
npm_package(node-adodb-5.0.3 node-adodb 5.0.3 fab70b3b2a145d39d1be4fd3bfb166c78ecb9a99a3464392c244715339dca53e users)
npm_package(database-js-adodb-1.1.3 database-js-adodb 1.1.3
  3cc95ae9ee753181d197eefc3c7a316bdfb1a7891bbc41c6a8684f236d38228c states)
configure_file(${fruit}/test/fruit.mdb ${JET_FILES_DIR}/fruit.mdb COPYONLY)
configure_file(${users}/examples/node-adodb.mdb ${JET_FILES_DIR}/users.mdb COPYONLY)
configure_file(${states}/test.mdb ${JET_FILES_DIR}/states.mdb COPYONLY)
