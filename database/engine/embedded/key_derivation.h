// Derives the key of an encrypted file from its password as the SQLCipher 4 scheme does: PBKDF2 with HMAC-SHA512 and
// 256000 rounds, which take about a tenth of a second. Cannot fail. It is C because it is compiled together with the
// amalgamation. The functions touch no memory beside their arguments and their stack, so they may run on several
// threads at once. Everything else of SQLite is built for one thread.
#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

enum { SQLCIPHER4_SALT_SIZE = 16, SQLCIPHER4_KEY_SIZE = 32 };

void sqlcipher4_derive_key(const unsigned char* password, size_t password_size,
                           const unsigned char salt[SQLCIPHER4_SALT_SIZE], unsigned char key[SQLCIPHER4_KEY_SIZE]);

/// Returns 1 where this is the first page of the key's file: the page carries a checksum that only its key gives.
/// `page_size` is 1024 to 65536.
int sqlcipher4_fits_first_page(const unsigned char key[SQLCIPHER4_KEY_SIZE], const unsigned char* page,
                               size_t page_size);

/// Overwrites memory that held a secret. The compiler never optimises this away.
void wipe_memory(void* memory, size_t size);

#ifdef __cplusplus
}
#endif
