/* Word walking over single-byte text, with the results' 16 bits as they are: a word begins at a non-blank after a
 * blank, tab or line end, or at the text's start. Positions count from 1; below 1 they count as 1. Never reads outside.
 */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* First character of the next word at or after `posicion`; 0 if there is none. `texto` ends with a NUL. The result is
 * the position's low 16 bits, so beyond 32767 it comes back wrapped. */
int16_t SigPosPalabra(int32_t posicion, const char *texto);

/* First character of the word that begins at or before `posicion`; 1 or less at the text's start, 0 for a position
 * beyond the end. Callers pass the position just before a word to get the word before it. */
int16_t AntPosPalabra(int32_t posicion, const char *texto);

#ifdef __cplusplus
}
#endif
