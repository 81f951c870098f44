/* SQLite3 Multiple Ciphers as one translation unit, with one door more: its key derivation, which the amalgamation
 * keeps private. Deriving the key ourselves is what lets a process derive it once per file. */
#include "database/engine/embedded/key_derivation.h"

#include "sqlite3.c"

/* The derivation leaves the key where its functions had their variables. This one has its own in the same place. */
static __attribute__((noinline)) void wipe_stack(void) {
  unsigned char room[16384];
  sqlite3mcSecureZeroMemory(room, sizeof room);
}

void sqlcipher4_derive_key(const unsigned char* password, size_t password_size,
                           const unsigned char salt[SQLCIPHER4_SALT_SIZE], unsigned char key[SQLCIPHER4_KEY_SIZE]) {
  fastpbkdf2_hmac_sha512(password, password_size, salt, SQLCIPHER4_SALT_SIZE, 256000, key, SQLCIPHER4_KEY_SIZE);
  wipe_stack();
}

int sqlcipher4_fits_first_page(const unsigned char key[SQLCIPHER4_KEY_SIZE], const unsigned char* page,
                               size_t page_size) {
  enum { salt_mask = 0x3a, rounds = 2, sha512 = 2, sum_size = 64 };
  unsigned char sum_key[SQLCIPHER4_KEY_SIZE], salt[SQLCIPHER4_SALT_SIZE], sum[sum_size];
  unsigned char page_number[4] = {1, 0, 0, 0};
  for (size_t i = 0; i < SQLCIPHER4_SALT_SIZE; ++i) salt[i] = page[i] ^ salt_mask;
  fastpbkdf2_hmac_sha512(key, SQLCIPHER4_KEY_SIZE, salt, sizeof salt, rounds, sum_key, sizeof sum_key);
  unsigned char* content = (unsigned char*)page + SQLCIPHER4_SALT_SIZE;
  const size_t content_size = page_size - SQLCIPHER4_SALT_SIZE - sum_size;
  sqlcipher_hmac(sha512, sum_key, sizeof sum_key, content, (int)content_size, page_number, sizeof page_number, sum);
  sqlite3mcSecureZeroMemory(sum_key, sizeof sum_key);
  return memcmp(content + content_size, sum, sizeof sum) == 0;
}

void wipe_memory(void* memory, size_t size) { sqlite3mcSecureZeroMemory(memory, size); }
