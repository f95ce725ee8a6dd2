	.text
	.file	"sample.c"
	.globl	sum                             // -- Begin function sum
	.p2align	2
	.type	sum,@function
sum:                                    // @sum
.Lfunc_begin0:
	.file	0 "/build" "sample.c" md5 0xdbd1d0cf473becfd3515f0854124d705
	.loc	0 14 0                          // sample.c:14:0
	.cfi_startproc
// %bb.0:
	//DEBUG_VALUE: sum:values <- $x0
	//DEBUG_VALUE: sum:count <- $w1
	stp	x29, x30, [sp, #-16]!           // 16-byte Folded Spill
	mov	x29, sp
	.cfi_def_cfa w29, 16
	.cfi_offset w30, -8
	.cfi_offset w29, -16
.Ltmp0:
	//DEBUG_VALUE: sum:total <- 0
	.loc	0 17 9 prologue_end             // sample.c:17:9
	tbnz	w1, #31, .LBB0_13
.Ltmp1:
// %bb.1:
	//DEBUG_VALUE: sum:total <- 0
	//DEBUG_VALUE: sum:count <- $w1
	//DEBUG_VALUE: sum:values <- $x0
	//DEBUG_VALUE: sum:total <- 0
	//DEBUG_VALUE: i <- 0
	.loc	0 21 5                          // sample.c:21:5
	cbz	w1, .LBB0_4
.Ltmp2:
// %bb.2:
	//DEBUG_VALUE: i <- 0
	//DEBUG_VALUE: sum:total <- 0
	//DEBUG_VALUE: sum:count <- $w1
	//DEBUG_VALUE: sum:values <- $x0
	.loc	0 21 23 is_stmt 0               // sample.c:21:23
	mov	w9, w1
.Ltmp3:
	.loc	0 21 5                          // sample.c:21:5
	cmp	w1, #8
	b.hs	.LBB0_5
.Ltmp4:
// %bb.3:
	//DEBUG_VALUE: i <- 0
	//DEBUG_VALUE: sum:total <- 0
	//DEBUG_VALUE: sum:count <- $w1
	//DEBUG_VALUE: sum:values <- $x0
	.loc	0 0 5                           // sample.c:0:5
	mov	x10, xzr
	mov	w8, wzr
	b	.LBB0_8
.Ltmp5:
.LBB0_4:
	//DEBUG_VALUE: i <- 0
	//DEBUG_VALUE: sum:total <- 0
	//DEBUG_VALUE: sum:count <- $w1
	//DEBUG_VALUE: sum:values <- $x0
	mov	w8, wzr
	b	.LBB0_12
.Ltmp6:
.LBB0_5:
	//DEBUG_VALUE: i <- 0
	//DEBUG_VALUE: sum:total <- 0
	//DEBUG_VALUE: sum:count <- $w1
	//DEBUG_VALUE: sum:values <- $x0
	.loc	0 21 5                          // sample.c:21:5
	and	x10, x9, #0xfffffff8
	add	x8, x0, #16
	movi	v0.2d, #0000000000000000
	mov	x11, x10
	movi	v1.2d, #0000000000000000
.Ltmp7:
.LBB0_6:                                // =>This Inner Loop Header: Depth=1
	//DEBUG_VALUE: i <- 0
	//DEBUG_VALUE: sum:total <- 0
	//DEBUG_VALUE: sum:count <- $w1
	//DEBUG_VALUE: sum:values <- $x0
	.loc	0 22 25 is_stmt 1               // sample.c:22:25
	ldp	q2, q3, [x8, #-16]
	.loc	0 21 33                         // sample.c:21:33
	add	x8, x8, #32
	subs	x11, x11, #8
	.loc	0 22 15                         // sample.c:22:15
	mla	v0.4s, v2.4s, v2.4s
	mla	v1.4s, v3.4s, v3.4s
	.loc	0 21 33                         // sample.c:21:33
	b.ne	.LBB0_6
.Ltmp8:
// %bb.7:
	//DEBUG_VALUE: i <- 0
	//DEBUG_VALUE: sum:total <- 0
	//DEBUG_VALUE: sum:count <- $w1
	//DEBUG_VALUE: sum:values <- $x0
	.loc	0 21 5 is_stmt 0                // sample.c:21:5
	add	v0.4s, v1.4s, v0.4s
	cmp	x10, x9
	addv	s0, v0.4s
	fmov	w8, s0
	b.eq	.LBB0_10
.Ltmp9:
.LBB0_8:
	//DEBUG_VALUE: i <- 0
	//DEBUG_VALUE: sum:total <- 0
	//DEBUG_VALUE: sum:count <- $w1
	//DEBUG_VALUE: sum:values <- $x0
	add	x11, x0, x10, lsl #2
	sub	x9, x9, x10
.Ltmp10:
.LBB0_9:                                // =>This Inner Loop Header: Depth=1
	//DEBUG_VALUE: sum:count <- $w1
	//DEBUG_VALUE: sum:values <- $x0
	//DEBUG_VALUE: sum:total <- $w8
	//DEBUG_VALUE: i <- [DW_OP_LLVM_arg 0, DW_OP_consts 4, DW_OP_LLVM_arg 0, DW_OP_mul, DW_OP_LLVM_arg 0, DW_OP_plus, DW_OP_minus, DW_OP_consts 4, DW_OP_div, DW_OP_LLVM_arg 0, DW_OP_plus, DW_OP_stack_value] undef
	.loc	0 22 25 is_stmt 1               // sample.c:22:25
	ldr	w10, [x11], #4
.Ltmp11:
	//DEBUG_VALUE: square:x <- $w10
	.loc	0 21 23                         // sample.c:21:23
	subs	x9, x9, #1
	.loc	0 22 15                         // sample.c:22:15
	madd	w8, w10, w10, w8
.Ltmp12:
	//DEBUG_VALUE: i <- [DW_OP_LLVM_arg 0, DW_OP_consts 4, DW_OP_LLVM_arg 0, DW_OP_mul, DW_OP_LLVM_arg 0, DW_OP_plus, DW_OP_minus, DW_OP_consts 4, DW_OP_div, DW_OP_consts 1, DW_OP_LLVM_arg 0, DW_OP_plus, DW_OP_plus, DW_OP_stack_value] undef
	//DEBUG_VALUE: sum:total <- $w8
	.loc	0 21 5                          // sample.c:21:5
	b.ne	.LBB0_9
.Ltmp13:
.LBB0_10:
	//DEBUG_VALUE: sum:count <- $w1
	//DEBUG_VALUE: sum:values <- $x0
	//DEBUG_VALUE: clamp:value <- $w8
	.file	1 "." "limits.h" md5 0xf86e1f8ae4a8f2b6750b5285ae0b5e88
	.loc	1 0 0 is_stmt 0                 // ./limits.h:0:0
	cmp	w8, #254
	b.ls	.LBB0_12
.Ltmp14:
// %bb.11:
	//DEBUG_VALUE: clamp:value <- $w8
	//DEBUG_VALUE: sum:count <- $w1
	//DEBUG_VALUE: sum:values <- $x0
	mov	w8, #255
.Ltmp15:
.LBB0_12:
	//DEBUG_VALUE: sum:count <- $w1
	//DEBUG_VALUE: sum:values <- $x0
	.loc	0 24 5 is_stmt 1                // sample.c:24:5
	mov	w0, w8
.Ltmp16:
	//DEBUG_VALUE: sum:values <- [DW_OP_LLVM_entry_value 1] $x0
	ldp	x29, x30, [sp], #16             // 16-byte Folded Reload
	ret
.Ltmp17:
.LBB0_13:
	//DEBUG_VALUE: sum:total <- 0
	//DEBUG_VALUE: sum:count <- $w1
	//DEBUG_VALUE: sum:values <- $x0
	.loc	0 18 9                          // sample.c:18:9
	mov	w0, w1
.Ltmp18:
	//DEBUG_VALUE: sum:values <- [DW_OP_LLVM_entry_value 1] $x0
	bl	fail
.Ltmp19:
	//DEBUG_VALUE: sum:count <- [DW_OP_LLVM_entry_value 1] $w1
.Lfunc_end0:
	.size	sum, .Lfunc_end0-sum
	.cfi_endproc
                                        // -- End function
	.globl	first                           // -- Begin function first
	.p2align	2
	.type	first,@function
first:                                  // @first
.Lfunc_begin1:
	.loc	0 27 0                          // sample.c:27:0
	.cfi_startproc
// %bb.0:
	.loc	0 27 19 prologue_end            // sample.c:27:19
	mov	w0, #1
	ret
.Ltmp20:
.Lfunc_end1:
	.size	first, .Lfunc_end1-first
	.cfi_endproc
                                        // -- End function
	.globl	second                          // -- Begin function second
	.p2align	2
	.type	second,@function
second:                                 // @second
.Lfunc_begin2:
	.loc	0 27 0                          // sample.c:27:0
	.cfi_startproc
// %bb.0:
	.loc	0 27 50 prologue_end            // sample.c:27:50
	mov	w0, #2
	ret
.Ltmp21:
.Lfunc_end2:
	.size	second, .Lfunc_end2-second
	.cfi_endproc
                                        // -- End function
	.globl	widen                           // -- Begin function widen
	.p2align	2
	.type	widen,@function
widen:                                  // @widen
.Lfunc_begin3:
	.loc	0 32 0                          // sample.c:32:0
	.cfi_startproc
// %bb.0:
	//DEBUG_VALUE: widen:x <- $w0
	.loc	0 34 14 prologue_end            // sample.c:34:14
	add	w0, w0, #1
.Ltmp22:
	//DEBUG_VALUE: widen:x <- [DW_OP_LLVM_entry_value 1] $w0
	.loc	0 34 5 is_stmt 0                // sample.c:34:5
	ret
.Ltmp23:
.Lfunc_end3:
	.size	widen, .Lfunc_end3-widen
	.cfi_endproc
                                        // -- End function
