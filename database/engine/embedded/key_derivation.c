/* SQLite3 Multiple Ciphers as one translation unit, with one door more: its key derivation, which the amalgamation
 * keeps private. Deriving the key ourselves is what lets a process derive it once per file. */
#include "database/engine/embedded/key_derivation.h"

#include "sqlite3.c"

void sqlcipher4_derive_key(const unsigned char* password, size_t password_size,
                           const unsigned char salt[SQLCIPHER4_SALT_SIZE], unsigned char key[SQLCIPHER4_KEY_SIZE]) {
  fastpbkdf2_hmac_sha512(password, password_size, salt, SQLCIPHER4_SALT_SIZE, 256000, key, SQLCIPHER4_KEY_SIZE);
}

void wipe_memory(void* memory, size_t size) { sqlite3mcSecureZeroMemory(memory, size); }
