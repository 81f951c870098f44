// The key of an encrypted file from its password, as the SQLCipher 4 scheme has it: PBKDF2 with HMAC-SHA512 and 256000
// rounds, which take about a tenth of a second. Cannot fail. C, because it is compiled together with the amalgamation.
// No function touches memory beside its arguments and its stack: both may run on several threads at once, unlike
// everything else of SQLite, which is built for one thread.
#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

enum { SQLCIPHER4_SALT_SIZE = 16, SQLCIPHER4_KEY_SIZE = 32 };

void sqlcipher4_derive_key(const unsigned char* password, size_t password_size,
                           const unsigned char salt[SQLCIPHER4_SALT_SIZE], unsigned char key[SQLCIPHER4_KEY_SIZE]);

/// 1 where the key is that of a file whose first page this is: the page carries a sum that only its key gives.
/// `page_size`: 1024 to 65536.
int sqlcipher4_fits_first_page(const unsigned char key[SQLCIPHER4_KEY_SIZE], const unsigned char* page,
                               size_t page_size);

/// Overwrites memory that held a secret; never optimised away.
void wipe_memory(void* memory, size_t size);

#ifdef __cplusplus
}
#endif
