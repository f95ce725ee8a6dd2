	.text
	.file	"sample.c"
	.globl	sum                             # -- Begin function sum
	.p2align	4, 0x90
	.type	sum,@function
sum:                                    # @sum
.Lfunc_begin0:
	.file	0 "/build" "sample.c" md5 0xdbd1d0cf473becfd3515f0854124d705
	.loc	0 14 0                          # sample.c:14:0
	.cfi_startproc
# %bb.0:
	#DEBUG_VALUE: sum:values <- $rdi
	#DEBUG_VALUE: sum:count <- $esi
	pushq	%rax
	.cfi_def_cfa_offset 16
.Ltmp0:
	#DEBUG_VALUE: sum:total <- 0
	.loc	0 17 15 prologue_end            # sample.c:17:15
	testl	%esi, %esi
.Ltmp1:
	.loc	0 17 9 is_stmt 0                # sample.c:17:9
	js	.LBB0_6
.Ltmp2:
# %bb.1:
	#DEBUG_VALUE: sum:values <- $rdi
	#DEBUG_VALUE: sum:count <- $esi
	#DEBUG_VALUE: sum:total <- 0
	#DEBUG_VALUE: i <- 0
	#DEBUG_VALUE: sum:total <- 0
	.loc	0 21 5 is_stmt 1                # sample.c:21:5
	je	.LBB0_2
.Ltmp3:
# %bb.4:
	#DEBUG_VALUE: sum:values <- $rdi
	#DEBUG_VALUE: sum:count <- $esi
	#DEBUG_VALUE: sum:total <- 0
	#DEBUG_VALUE: i <- 0
	.loc	0 21 23 is_stmt 0               # sample.c:21:23
	movl	%esi, %eax
	xorl	%edx, %edx
	xorl	%ecx, %ecx
.Ltmp4:
	.p2align	4, 0x90
.LBB0_5:                                # =>This Inner Loop Header: Depth=1
	#DEBUG_VALUE: sum:values <- $rdi
	#DEBUG_VALUE: sum:count <- $eax
	#DEBUG_VALUE: i <- $rdx
	#DEBUG_VALUE: sum:total <- $ecx
	.loc	0 22 25 is_stmt 1               # sample.c:22:25
	movl	(%rdi,%rdx,4), %esi
.Ltmp5:
	#DEBUG_VALUE: square:x <- $esi
	.loc	0 7 14                          # sample.c:7:14
	imull	%esi, %esi
.Ltmp6:
	.loc	0 22 15                         # sample.c:22:15
	addl	%esi, %ecx
.Ltmp7:
	#DEBUG_VALUE: sum:total <- $ecx
	.loc	0 21 33                         # sample.c:21:33
	addq	$1, %rdx
.Ltmp8:
	#DEBUG_VALUE: i <- $rdx
	.loc	0 21 23 is_stmt 0               # sample.c:21:23
	cmpq	%rdx, %rax
.Ltmp9:
	.loc	0 21 5                          # sample.c:21:5
	jne	.LBB0_5
	jmp	.LBB0_3
.Ltmp10:
.LBB0_2:
	#DEBUG_VALUE: sum:values <- $rdi
	#DEBUG_VALUE: sum:count <- $esi
	#DEBUG_VALUE: sum:total <- 0
	#DEBUG_VALUE: i <- 0
	.loc	0 0 5                           # sample.c:0:5
	xorl	%ecx, %ecx
.Ltmp11:
.LBB0_3:
	#DEBUG_VALUE: sum:values <- $rdi
	#DEBUG_VALUE: sum:count <- [DW_OP_LLVM_entry_value 1] $esi
	#DEBUG_VALUE: clamp:value <- $ecx
	cmpl	$255, %ecx
	movl	$255, %eax
	cmovbl	%ecx, %eax
.Ltmp12:
	.loc	0 24 5 is_stmt 1                # sample.c:24:5
	popq	%rcx
.Ltmp13:
	.cfi_def_cfa_offset 8
	retq
.Ltmp14:
.LBB0_6:
	.cfi_def_cfa_offset 16
	#DEBUG_VALUE: sum:values <- $rdi
	#DEBUG_VALUE: sum:count <- $esi
	#DEBUG_VALUE: sum:total <- 0
	.loc	0 18 9                          # sample.c:18:9
	movl	%esi, %edi
.Ltmp15:
	#DEBUG_VALUE: sum:values <- [DW_OP_LLVM_entry_value 1] $rdi
	callq	fail@PLT
.Ltmp16:
	#DEBUG_VALUE: sum:count <- [DW_OP_LLVM_entry_value 1] $esi
.Lfunc_end0:
	.size	sum, .Lfunc_end0-sum
	.cfi_endproc
	.file	1 "." "limits.h" md5 0xf86e1f8ae4a8f2b6750b5285ae0b5e88
                                        # -- End function
	.globl	first                           # -- Begin function first
	.p2align	4, 0x90
	.type	first,@function
first:                                  # @first
.Lfunc_begin1:
	.loc	0 27 0                          # sample.c:27:0
	.cfi_startproc
# %bb.0:
	.loc	0 27 19 prologue_end            # sample.c:27:19
	movl	$1, %eax
	retq
.Ltmp17:
.Lfunc_end1:
	.size	first, .Lfunc_end1-first
	.cfi_endproc
                                        # -- End function
	.globl	second                          # -- Begin function second
	.p2align	4, 0x90
	.type	second,@function
second:                                 # @second
.Lfunc_begin2:
	.loc	0 27 0                          # sample.c:27:0
	.cfi_startproc
# %bb.0:
	.loc	0 27 50 prologue_end            # sample.c:27:50
	movl	$2, %eax
	retq
.Ltmp18:
.Lfunc_end2:
	.size	second, .Lfunc_end2-second
	.cfi_endproc
                                        # -- End function
	.globl	widen                           # -- Begin function widen
	.p2align	4, 0x90
	.type	widen,@function
widen:                                  # @widen
.Lfunc_begin3:
	.loc	0 32 0                          # sample.c:32:0
	.cfi_startproc
# %bb.0:
	#DEBUG_VALUE: widen:x <- $edi
                                        # kill: def $edi killed $edi def $rdi
	.loc	0 34 14 prologue_end            # sample.c:34:14
	leal	1(%rdi), %eax
	.loc	0 34 5 is_stmt 0                # sample.c:34:5
	retq
.Ltmp19:
.Lfunc_end3:
	.size	widen, .Lfunc_end3-widen
	.cfi_endproc
                                        # -- End function
