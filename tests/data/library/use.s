	.file	"use.c"
	.text
.Ltext0:
	.file 0 "/src" "use.c"
	.p2align 4
	.globl	use
	.type	use, @function
use:
.LVL0:
.LFB3:
	.file 1 "use.c"
	.loc 1 5 38 view -0
	.cfi_startproc
	.loc 1 6 5 view .LVU1
	.loc 1 6 13 is_stmt 0 view .LVU2
	movl	$0, (%rsi)
	.loc 1 7 5 is_stmt 1 view .LVU3
.LVL1:
.LBB14:
.LBI14:
	.loc 1 2 12 view .LVU4
.LBB15:
	.loc 1 3 5 view .LVU5
.LBB16:
.LBI16:
	.file 2 "/usr/include/pair.h"
	.loc 2 8 19 view .LVU6
.LBB17:
	.loc 2 9 5 view .LVU7
.LBB18:
.LBI18:
	.loc 2 5 19 view .LVU8
.LBB19:
	.loc 2 6 5 view .LVU9
	.loc 2 6 14 is_stmt 0 view .LVU10
	movl	(%rdi), %eax
	leal	(%rax,%rax,8), %edx
	leal	(%rax,%rdx,2), %eax
.LBE19:
.LBE18:
	.loc 2 10 9 view .LVU11
	addl	4(%rdi), %eax
.LBE17:
.LBE16:
.LBE15:
.LBE14:
	.loc 1 7 23 view .LVU12
	leal	15(%rax,%rax,4), %eax
	.loc 1 8 1 view .LVU13
	ret
	.cfi_endproc
.LFE3:
	.size	use, .-use
.Letext0:
	.section	.debug_info,"",@progbits
.Ldebug_info0:
	.long	0x181
	.value	0x5
	.byte	0x1
	.byte	0x8
	.long	.Ldebug_abbrev0
	.uleb128 0x6
	.long	.LASF6
	.byte	0x1d
	.long	.LASF0
	.long	.LASF1
	.quad	.Ltext0
	.quad	.Letext0-.Ltext0
	.long	.Ldebug_line0
	.uleb128 0x7
	.long	.LASF7
	.byte	0x8
	.byte	0x2
	.byte	0x1
	.byte	0x8
	.long	0x52
	.uleb128 0x5
	.long	.LASF2
	.byte	0x2
	.long	0x57
	.byte	0
	.uleb128 0x5
	.long	.LASF3
	.byte	0x3
	.long	0x57
	.byte	0x4
	.byte	0
	.uleb128 0x8
	.long	0x2e
	.uleb128 0x9
	.byte	0x4
	.byte	0x5
	.string	"int"
	.uleb128 0xa
	.string	"use"
	.byte	0x1
	.byte	0x5
	.byte	0x5
	.long	0x57
	.quad	.LFB3
	.quad	.LFE3-.LFB3
	.uleb128 0x1
	.byte	0x9c
	.long	0x125
	.uleb128 0xb
	.string	"p"
	.byte	0x1
	.byte	0x5
	.byte	0x16
	.long	0x125
	.uleb128 0x1
	.byte	0x55
	.uleb128 0xc
	.long	.LASF4
	.byte	0x1
	.byte	0x5
	.byte	0x1e
	.long	0x12a
	.uleb128 0x1
	.byte	0x54
	.uleb128 0x1
	.long	0x12f
	.quad	.LBI14
	.byte	.LVU4
	.quad	.LBB14
	.quad	.LBE14-.LBB14
	.byte	0x1
	.byte	0x7
	.uleb128 0x2
	.long	0x140
	.long	.LLST0
	.long	.LVUS0
	.uleb128 0x1
	.long	0x14b
	.quad	.LBI16
	.byte	.LVU6
	.quad	.LBB16
	.quad	.LBE16-.LBB16
	.byte	0x1
	.byte	0x3
	.uleb128 0x2
	.long	0x15c
	.long	.LLST1
	.long	.LVUS1
	.uleb128 0x1
	.long	0x16c
	.quad	.LBI18
	.byte	.LVU8
	.quad	.LBB18
	.quad	.LBE18-.LBB18
	.byte	0x2
	.byte	0x9
	.uleb128 0x2
	.long	0x179
	.long	.LLST2
	.long	.LVUS2
	.byte	0
	.byte	0
	.byte	0
	.byte	0
	.uleb128 0x3
	.long	0x2e
	.uleb128 0x3
	.long	0x57
	.uleb128 0xd
	.long	.LASF5
	.byte	0x1
	.byte	0x2
	.byte	0xc
	.long	0x57
	.byte	0x1
	.long	0x14b
	.uleb128 0x4
	.string	"p"
	.byte	0x1
	.byte	0x2
	.byte	0x21
	.long	0x125
	.byte	0
	.uleb128 0xe
	.string	"sum"
	.byte	0x2
	.byte	0x8
	.byte	0x13
	.long	0x57
	.byte	0x3
	.long	0x167
	.uleb128 0x4
	.string	"p"
	.byte	0x2
	.byte	0x8
	.byte	0x2a
	.long	0x167
	.byte	0
	.uleb128 0x3
	.long	0x52
	.uleb128 0xf
	.long	.LASF8
	.byte	0x2
	.byte	0x5
	.byte	0x13
	.long	0x57
	.byte	0x3
	.uleb128 0x4
	.string	"x"
	.byte	0x2
	.byte	0x5
	.byte	0x1d
	.long	0x57
	.byte	0
	.byte	0
	.section	.debug_abbrev,"",@progbits
.Ldebug_abbrev0:
	.uleb128 0x1
	.uleb128 0x1d
	.byte	0x1
	.uleb128 0x31
	.uleb128 0x13
	.uleb128 0x52
	.uleb128 0x1
	.uleb128 0x2138
	.uleb128 0xb
	.uleb128 0x11
	.uleb128 0x1
	.uleb128 0x12
	.uleb128 0x7
	.uleb128 0x58
	.uleb128 0xb
	.uleb128 0x59
	.uleb128 0xb
	.uleb128 0x57
	.uleb128 0x21
	.sleb128 12
	.byte	0
	.byte	0
	.uleb128 0x2
	.uleb128 0x5
	.byte	0
	.uleb128 0x31
	.uleb128 0x13
	.uleb128 0x2
	.uleb128 0x17
	.uleb128 0x2137
	.uleb128 0x17
	.byte	0
	.byte	0
	.uleb128 0x3
	.uleb128 0xf
	.byte	0
	.uleb128 0xb
	.uleb128 0x21
	.sleb128 8
	.uleb128 0x49
	.uleb128 0x13
	.byte	0
	.byte	0
	.uleb128 0x4
	.uleb128 0x5
	.byte	0
	.uleb128 0x3
	.uleb128 0x8
	.uleb128 0x3a
	.uleb128 0xb
	.uleb128 0x3b
	.uleb128 0xb
	.uleb128 0x39
	.uleb128 0xb
	.uleb128 0x49
	.uleb128 0x13
	.byte	0
	.byte	0
	.uleb128 0x5
	.uleb128 0xd
	.byte	0
	.uleb128 0x3
	.uleb128 0xe
	.uleb128 0x3a
	.uleb128 0x21
	.sleb128 2
	.uleb128 0x3b
	.uleb128 0xb
	.uleb128 0x39
	.uleb128 0x21
	.sleb128 9
	.uleb128 0x49
	.uleb128 0x13
	.uleb128 0x38
	.uleb128 0xb
	.byte	0
	.byte	0
	.uleb128 0x6
	.uleb128 0x11
	.byte	0x1
	.uleb128 0x25
	.uleb128 0xe
	.uleb128 0x13
	.uleb128 0xb
	.uleb128 0x3
	.uleb128 0x1f
	.uleb128 0x1b
	.uleb128 0x1f
	.uleb128 0x11
	.uleb128 0x1
	.uleb128 0x12
	.uleb128 0x7
	.uleb128 0x10
	.uleb128 0x17
	.byte	0
	.byte	0
	.uleb128 0x7
	.uleb128 0x13
	.byte	0x1
	.uleb128 0x3
	.uleb128 0xe
	.uleb128 0xb
	.uleb128 0xb
	.uleb128 0x3a
	.uleb128 0xb
	.uleb128 0x3b
	.uleb128 0xb
	.uleb128 0x39
	.uleb128 0xb
	.uleb128 0x1
	.uleb128 0x13
	.byte	0
	.byte	0
	.uleb128 0x8
	.uleb128 0x26
	.byte	0
	.uleb128 0x49
	.uleb128 0x13
	.byte	0
	.byte	0
	.uleb128 0x9
	.uleb128 0x24
	.byte	0
	.uleb128 0xb
	.uleb128 0xb
	.uleb128 0x3e
	.uleb128 0xb
	.uleb128 0x3
	.uleb128 0x8
	.byte	0
	.byte	0
	.uleb128 0xa
	.uleb128 0x2e
	.byte	0x1
	.uleb128 0x3f
	.uleb128 0x19
	.uleb128 0x3
	.uleb128 0x8
	.uleb128 0x3a
	.uleb128 0xb
	.uleb128 0x3b
	.uleb128 0xb
	.uleb128 0x39
	.uleb128 0xb
	.uleb128 0x27
	.uleb128 0x19
	.uleb128 0x49
	.uleb128 0x13
	.uleb128 0x11
	.uleb128 0x1
	.uleb128 0x12
	.uleb128 0x7
	.uleb128 0x40
	.uleb128 0x18
	.uleb128 0x7a
	.uleb128 0x19
	.uleb128 0x1
	.uleb128 0x13
	.byte	0
	.byte	0
	.uleb128 0xb
	.uleb128 0x5
	.byte	0
	.uleb128 0x3
	.uleb128 0x8
	.uleb128 0x3a
	.uleb128 0xb
	.uleb128 0x3b
	.uleb128 0xb
	.uleb128 0x39
	.uleb128 0xb
	.uleb128 0x49
	.uleb128 0x13
	.uleb128 0x2
	.uleb128 0x18
	.byte	0
	.byte	0
	.uleb128 0xc
	.uleb128 0x5
	.byte	0
	.uleb128 0x3
	.uleb128 0xe
	.uleb128 0x3a
	.uleb128 0xb
	.uleb128 0x3b
	.uleb128 0xb
	.uleb128 0x39
	.uleb128 0xb
	.uleb128 0x49
	.uleb128 0x13
	.uleb128 0x2
	.uleb128 0x18
	.byte	0
	.byte	0
	.uleb128 0xd
	.uleb128 0x2e
	.byte	0x1
	.uleb128 0x3
	.uleb128 0xe
	.uleb128 0x3a
	.uleb128 0xb
	.uleb128 0x3b
	.uleb128 0xb
	.uleb128 0x39
	.uleb128 0xb
	.uleb128 0x27
	.uleb128 0x19
	.uleb128 0x49
	.uleb128 0x13
	.uleb128 0x20
	.uleb128 0xb
	.uleb128 0x1
	.uleb128 0x13
	.byte	0
	.byte	0
	.uleb128 0xe
	.uleb128 0x2e
	.byte	0x1
	.uleb128 0x3
	.uleb128 0x8
	.uleb128 0x3a
	.uleb128 0xb
	.uleb128 0x3b
	.uleb128 0xb
	.uleb128 0x39
	.uleb128 0xb
	.uleb128 0x27
	.uleb128 0x19
	.uleb128 0x49
	.uleb128 0x13
	.uleb128 0x20
	.uleb128 0xb
	.uleb128 0x1
	.uleb128 0x13
	.byte	0
	.byte	0
	.uleb128 0xf
	.uleb128 0x2e
	.byte	0x1
	.uleb128 0x3
	.uleb128 0xe
	.uleb128 0x3a
	.uleb128 0xb
	.uleb128 0x3b
	.uleb128 0xb
	.uleb128 0x39
	.uleb128 0xb
	.uleb128 0x27
	.uleb128 0x19
	.uleb128 0x49
	.uleb128 0x13
	.uleb128 0x20
	.uleb128 0xb
	.byte	0
	.byte	0
	.byte	0
	.section	.debug_loclists,"",@progbits
	.long	.Ldebug_loc3-.Ldebug_loc2
.Ldebug_loc2:
	.value	0x5
	.byte	0x8
	.byte	0
	.long	0
.Ldebug_loc0:
.LVUS0:
	.uleb128 .LVU4
	.uleb128 .LVU10
.LLST0:
	.byte	0x4
	.uleb128 .LVL1-.Ltext0
	.uleb128 .LVL1-.Ltext0
	.uleb128 0x1
	.byte	0x55
	.byte	0
.LVUS1:
	.uleb128 .LVU6
	.uleb128 .LVU10
.LLST1:
	.byte	0x4
	.uleb128 .LVL1-.Ltext0
	.uleb128 .LVL1-.Ltext0
	.uleb128 0x1
	.byte	0x55
	.byte	0
.LVUS2:
	.uleb128 .LVU8
	.uleb128 .LVU10
.LLST2:
	.byte	0x4
	.uleb128 .LVL1-.Ltext0
	.uleb128 .LVL1-.Ltext0
	.uleb128 0x2
	.byte	0x75
	.sleb128 0
	.byte	0
.Ldebug_loc3:
	.section	.debug_aranges,"",@progbits
	.long	0x2c
	.value	0x2
	.long	.Ldebug_info0
	.byte	0x8
	.byte	0
	.value	0
	.value	0
	.quad	.Ltext0
	.quad	.Letext0-.Ltext0
	.quad	0
	.quad	0
	.section	.debug_line,"",@progbits
.Ldebug_line0:
	.section	.debug_str,"MS",@progbits,1
.LASF2:
	.string	"first"
.LASF4:
	.string	"result"
.LASF5:
	.string	"measure"
.LASF6:
	.string	"GNU C17 12.2.0 -mtune=generic -march=x86-64 -g -O2 -fasynchronous-unwind-tables"
.LASF8:
	.string	"twice"
.LASF3:
	.string	"second"
.LASF7:
	.string	"pair"
	.section	.debug_line_str,"MS",@progbits,1
.LASF0:
	.string	"use.c"
.LASF1:
	.string	"/src"
	.ident	"GCC: (Debian 12.2.0-14+deb12u1) 12.2.0"
	.section	.note.GNU-stack,"",@progbits
