	.file	"inlined.c"
	.text
.Ltext0:
	.cfi_sections	.debug_frame
	.file 0 "/src" "inlined.c"
	.p2align 4
	.globl	outer
	.type	outer, @function
outer:
.LVL0:
.LFB2:
	.file 1 "inlined.c"
	.loc 1 10 38 view -0
	.cfi_startproc
	.loc 1 11 5 view .LVU1
	.loc 1 11 13 is_stmt 0 view .LVU2
	movl	%edi, (%rdx)
	.loc 1 12 5 is_stmt 1 view .LVU3
.LVL1:
.LBB12:
.LBI12:
	.loc 1 5 12 view .LVU4
.LBB13:
	.loc 1 6 5 view .LVU5
.LBB14:
.LBI14:
	.loc 1 1 12 view .LVU6
.LBB15:
	.loc 1 2 5 view .LVU7
	.loc 1 2 5 is_stmt 0 view .LVU8
.LBE15:
.LBE14:
.LBB17:
.LBI17:
	.loc 1 1 12 is_stmt 1 view .LVU9
.LBB18:
	.loc 1 2 5 view .LVU10
	.loc 1 2 14 is_stmt 0 view .LVU11
	imull	%esi, %esi
.LVL2:
	.loc 1 2 14 view .LVU12
.LBE18:
.LBE17:
.LBB19:
.LBB16:
	imull	%edi, %edi
.LVL3:
	.loc 1 2 14 view .LVU13
.LBE16:
.LBE19:
.LBE13:
.LBE12:
	.loc 1 12 33 view .LVU14
	leal	-7(%rdi,%rsi), %eax
	.loc 1 13 1 view .LVU15
	ret
	.cfi_endproc
.LFE2:
	.size	outer, .-outer
.Letext0:
	.section	.debug_info,"",@progbits
.Ldebug_info0:
	.long	0x154
	.value	0x5
	.byte	0x1
	.byte	0x8
	.long	.Ldebug_abbrev0
	.uleb128 0x5
	.long	.LASF2
	.byte	0x1d
	.long	.LASF0
	.long	.LASF1
	.quad	.Ltext0
	.quad	.Letext0-.Ltext0
	.long	.Ldebug_line0
	.uleb128 0x6
	.long	.LASF3
	.byte	0x1
	.byte	0xa
	.byte	0x5
	.long	0x10f
	.quad	.LFB2
	.quad	.LFE2-.LFB2
	.uleb128 0x1
	.byte	0x9c
	.long	0x10f
	.uleb128 0x3
	.string	"a"
	.byte	0xf
	.long	0x10f
	.long	.LLST0
	.long	.LVUS0
	.uleb128 0x3
	.string	"b"
	.byte	0x16
	.long	0x10f
	.long	.LLST1
	.long	.LVUS1
	.uleb128 0x7
	.long	.LASF4
	.byte	0x1
	.byte	0xa
	.byte	0x1e
	.long	0x116
	.uleb128 0x1
	.byte	0x51
	.uleb128 0x4
	.long	0x11c
	.quad	.LBI12
	.byte	.LVU4
	.quad	.LBB12
	.quad	.LBE12-.LBB12
	.byte	0xc
	.byte	0xc
	.uleb128 0x1
	.long	0x136
	.long	.LLST2
	.long	.LVUS2
	.uleb128 0x1
	.long	0x12d
	.long	.LLST3
	.long	.LVUS3
	.uleb128 0x8
	.long	0x140
	.quad	.LBI14
	.byte	.LVU6
	.long	.LLRL4
	.byte	0x1
	.byte	0x6
	.byte	0xc
	.long	0xdf
	.uleb128 0x1
	.long	0x14d
	.long	.LLST5
	.long	.LVUS5
	.byte	0
	.uleb128 0x4
	.long	0x140
	.quad	.LBI17
	.byte	.LVU9
	.quad	.LBB17
	.quad	.LBE17-.LBB17
	.byte	0x7
	.byte	0xb
	.uleb128 0x1
	.long	0x14d
	.long	.LLST6
	.long	.LVUS6
	.byte	0
	.byte	0
	.byte	0
	.uleb128 0x9
	.byte	0x4
	.byte	0x5
	.string	"int"
	.uleb128 0xa
	.byte	0x8
	.long	0x10f
	.uleb128 0xb
	.long	.LASF5
	.byte	0x1
	.byte	0x5
	.byte	0xc
	.long	0x10f
	.byte	0x1
	.long	0x140
	.uleb128 0x2
	.string	"a"
	.byte	0x5
	.byte	0x1f
	.long	0x10f
	.uleb128 0x2
	.string	"b"
	.byte	0x5
	.byte	0x26
	.long	0x10f
	.byte	0
	.uleb128 0xc
	.long	.LASF6
	.byte	0x1
	.byte	0x1
	.byte	0xc
	.long	0x10f
	.byte	0x1
	.uleb128 0x2
	.string	"x"
	.byte	0x1
	.byte	0x17
	.long	0x10f
	.byte	0
	.byte	0
	.section	.debug_abbrev,"",@progbits
.Ldebug_abbrev0:
	.uleb128 0x1
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
	.uleb128 0x2
	.uleb128 0x5
	.byte	0
	.uleb128 0x3
	.uleb128 0x8
	.uleb128 0x3a
	.uleb128 0x21
	.sleb128 1
	.uleb128 0x3b
	.uleb128 0xb
	.uleb128 0x39
	.uleb128 0xb
	.uleb128 0x49
	.uleb128 0x13
	.byte	0
	.byte	0
	.uleb128 0x3
	.uleb128 0x5
	.byte	0
	.uleb128 0x3
	.uleb128 0x8
	.uleb128 0x3a
	.uleb128 0x21
	.sleb128 1
	.uleb128 0x3b
	.uleb128 0x21
	.sleb128 10
	.uleb128 0x39
	.uleb128 0xb
	.uleb128 0x49
	.uleb128 0x13
	.uleb128 0x2
	.uleb128 0x17
	.uleb128 0x2137
	.uleb128 0x17
	.byte	0
	.byte	0
	.uleb128 0x4
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
	.uleb128 0x21
	.sleb128 1
	.uleb128 0x59
	.uleb128 0xb
	.uleb128 0x57
	.uleb128 0xb
	.byte	0
	.byte	0
	.uleb128 0x5
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
	.uleb128 0x6
	.uleb128 0x2e
	.byte	0x1
	.uleb128 0x3f
	.uleb128 0x19
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
	.uleb128 0x7
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
	.uleb128 0x8
	.uleb128 0x1d
	.byte	0x1
	.uleb128 0x31
	.uleb128 0x13
	.uleb128 0x52
	.uleb128 0x1
	.uleb128 0x2138
	.uleb128 0xb
	.uleb128 0x55
	.uleb128 0x17
	.uleb128 0x58
	.uleb128 0xb
	.uleb128 0x59
	.uleb128 0xb
	.uleb128 0x57
	.uleb128 0xb
	.uleb128 0x1
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
	.uleb128 0xf
	.byte	0
	.uleb128 0xb
	.uleb128 0xb
	.uleb128 0x49
	.uleb128 0x13
	.byte	0
	.byte	0
	.uleb128 0xb
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
	.uleb128 0xc
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
	.uleb128 0
	.uleb128 .LVU13
	.uleb128 .LVU13
	.uleb128 0
.LLST0:
	.byte	0x4
	.uleb128 .LVL0-.Ltext0
	.uleb128 .LVL3-.Ltext0
	.uleb128 0x1
	.byte	0x55
	.byte	0x4
	.uleb128 .LVL3-.Ltext0
	.uleb128 .LFE2-.Ltext0
	.uleb128 0x2
	.byte	0x71
	.sleb128 0
	.byte	0
.LVUS1:
	.uleb128 0
	.uleb128 .LVU12
	.uleb128 .LVU12
	.uleb128 0
.LLST1:
	.byte	0x4
	.uleb128 .LVL0-.Ltext0
	.uleb128 .LVL2-.Ltext0
	.uleb128 0x1
	.byte	0x54
	.byte	0x4
	.uleb128 .LVL2-.Ltext0
	.uleb128 .LFE2-.Ltext0
	.uleb128 0x4
	.byte	0xa3
	.uleb128 0x1
	.byte	0x54
	.byte	0x9f
	.byte	0
.LVUS2:
	.uleb128 .LVU4
	.uleb128 .LVU11
.LLST2:
	.byte	0x4
	.uleb128 .LVL1-.Ltext0
	.uleb128 .LVL1-.Ltext0
	.uleb128 0x1
	.byte	0x54
	.byte	0
.LVUS3:
	.uleb128 .LVU4
	.uleb128 .LVU11
.LLST3:
	.byte	0x4
	.uleb128 .LVL1-.Ltext0
	.uleb128 .LVL1-.Ltext0
	.uleb128 0x1
	.byte	0x55
	.byte	0
.LVUS5:
	.uleb128 .LVU6
	.uleb128 .LVU8
.LLST5:
	.byte	0x4
	.uleb128 .LVL1-.Ltext0
	.uleb128 .LVL1-.Ltext0
	.uleb128 0x1
	.byte	0x55
	.byte	0
.LVUS6:
	.uleb128 .LVU8
	.uleb128 .LVU11
.LLST6:
	.byte	0x4
	.uleb128 .LVL1-.Ltext0
	.uleb128 .LVL1-.Ltext0
	.uleb128 0x1
	.byte	0x54
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
	.section	.debug_rnglists,"",@progbits
.Ldebug_ranges0:
	.long	.Ldebug_ranges3-.Ldebug_ranges2
.Ldebug_ranges2:
	.value	0x5
	.byte	0x8
	.byte	0
	.long	0
.LLRL4:
	.byte	0x4
	.uleb128 .LBB14-.Ltext0
	.uleb128 .LBE14-.Ltext0
	.byte	0x4
	.uleb128 .LBB19-.Ltext0
	.uleb128 .LBE19-.Ltext0
	.byte	0
.Ldebug_ranges3:
	.section	.debug_line,"",@progbits
.Ldebug_line0:
	.section	.debug_str,"MS",@progbits,1
.LASF4:
	.string	"result"
.LASF3:
	.string	"outer"
.LASF6:
	.string	"square"
.LASF2:
	.string	"GNU C17 12.2.0 -mtune=generic -march=x86-64 -gdwarf-5 -O2 -fno-asynchronous-unwind-tables"
.LASF5:
	.string	"sum_of_squares"
	.section	.debug_line_str,"MS",@progbits,1
.LASF0:
	.string	"inlined.c"
.LASF1:
	.string	"/src"
	.ident	"GCC: (Debian 12.2.0-14+deb12u1) 12.2.0"
	.section	.note.GNU-stack,"",@progbits
