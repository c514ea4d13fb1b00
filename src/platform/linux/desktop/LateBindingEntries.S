// One entry for each late-bound function: a jump through its slot, which leaves all arguments where they are.

#if defined(__x86_64__)
#define JUMP_THROUGH(symbol) endbr64; jmp *lateSlot_##symbol(%rip)
#elif defined(__aarch64__)
#define JUMP_THROUGH(symbol) hint #34; adrp x16, lateSlot_##symbol; ldr x16, [x16, :lo12:lateSlot_##symbol]; br x16
#else
#error "No late binding for this processor yet: add its jump here"
#endif

// Hidden, so that the libraries themselves never come through here.
#define LATE_FUNCTION(library, symbol) \
    .text; .balign 16; .globl symbol; .hidden symbol; .type symbol, %function; symbol: JUMP_THROUGH(symbol); \
    .size symbol, .-symbol; .data; .balign 8; .globl lateSlot_##symbol; .hidden lateSlot_##symbol; \
    lateSlot_##symbol: .quad lateBindingUnbound;

#include "LateBindingSymbols.inc"

.section .note.GNU-stack, "", %progbits
