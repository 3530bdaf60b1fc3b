/* The pronunciation dictionary: a table in memory, its iteration cursor and its file. One table a process; all calls on
 * one thread. Texts are NUL-terminated UTF-8; an entry's two texts are each under 1024 bytes. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define ONDALIS_DICC_TAM 1024 /* bytes of each transfer buffer, NUL included */

/* Replaces the table with the file; 1 = loaded. Otherwise the table is empty: 0 = no such file or it can't be read, -1
 * = it is damaged and has been moved aside as "<path>.roto", ".roto.1" and so on, never over another. */
int16_t CargaDicc(const char *ruta);
void PrimeraPosicionDicc(void);                         /* cursor to the first entry */
int16_t GetPosicionDicc(char *clave, char *conversion); /* copies the entry at the cursor; 0 = none, else 1 */
void SigPosicionDicc(void);                             /* cursor one entry on */
/* Adds behind the last entry. A key that is there already keeps its place and gets this conversion. Refused: an empty
 * key, a text of ONDALIS_DICC_TAM bytes or more, a text that isn't UTF-8. */
void AddConversionDicc(const char *clave, const char *conversion);
void LiberaMemDicc(void); /* empties the table */
/* Writes the table whole or not at all; 0 = failed, else 1. The folder must exist; the table stays as it is. */
int16_t GrabaDicc(const char *ruta);

/* Counts the changes of the table: lets a caller keep what it built from it. */
uint64_t VersionDicc(void);

#ifdef __cplusplus
}
#endif
