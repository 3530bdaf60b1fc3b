/* Speech of the formant voices with the operations of the ECI interface: texts with backquote annotations, to the sound
 * device or into a WAV file of 11025 Hz, waiting or not. One instance a process; all calls on one thread. Texts are
 * NUL-terminated; each is UTF-8 where it is wholly valid UTF-8 or begins with its byte-order mark, else Windows-1252.
 */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define ONDALIS_ECI_TAM_ERROR 256 /* bytes of the buffer of UltimoErrorECI, NUL included */

void CreaVozECI(void);
void BorraVozECI(void); /* stops; a file under way keeps a true header */
void RestauraECI(void); /* neutral: the sound device, no pending text; harmless while speaking */
/* The next speech goes into this file, behind what it holds if it is a WAV file of our form. The file exists from here
 * on. 0 = failed, also while speaking; an existing file is as it was. */
int16_t SetDestinoECI(const char *ruta);
/* Adds to what will be spoken; several calls add up, and an annotation holds for the texts behind it. 0 = failed. */
int16_t AddTextoECI(const char *texto);
/* Speaks what was added; nothing is pending any more. 1 = returns when it has been spoken or was stopped, 0 = at once.
 * 0 = failed: already speaking, the engine couldn't say the text, or the file couldn't be written or lacks a part of
 * the text. Without waiting all but the first are told by UltimoErrorECI alone, once EstaHablandoECI is 0; it is empty
 * for a speech that went well. */
int16_t HablaECI(int16_t espera);
int16_t EstaHablandoECI(void); /* 1 while speaking; for a file until it is complete */
void CallaECI(void);           /* silence within 50 ms; drops pending text; a file keeps a true header */
/* The last failure, cut to 255 bytes at a character's border; the rest of the buffer is zeros. */
void UltimoErrorECI(char *bufer);

#ifdef __cplusplus
}
#endif
