/* The pronunciation dictionary: a table in memory, its iteration cursor and its file. One table a process; all calls on
 * one thread. Texts are NUL-terminated UTF-8; an entry's two texts are each under 1024 bytes. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define ONDALIS_DICC_TAM 1024 /* bytes of each transfer buffer, NUL included */

int16_t CargaDicc(const char *ruta); /* replaces the table with the file; 1 = loaded. A damaged file is kept aside */
void PrimeraPosicionDicc(void);      /* cursor to the first entry */
int16_t GetPosicionDicc(char *clave, char *conversion); /* copies the entry at the cursor; 0 = none, else 1 */
void SigPosicionDicc(void);                             /* cursor one entry on */
void AddConversionDicc(const char *clave, const char *conversion);
void LiberaMemDicc(void);            /* empties the table */
int16_t GrabaDicc(const char *ruta); /* writes the table whole or not at all; 0 = failed */

/* Counts the changes of the table: lets a caller keep what it built from it. */
uint64_t VersionDicc(void);

#ifdef __cplusplus
}
#endif
