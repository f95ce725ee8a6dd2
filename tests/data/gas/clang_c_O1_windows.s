	.text
	.def	@feat.00;
	.scl	3;
	.type	0;
	.endef
	.globl	@feat.00
.set @feat.00, 0
	.file	"sample.c"
	.def	sum;
	.scl	2;
	.type	32;
	.endef
	.globl	sum                             # -- Begin function sum
	.p2align	4, 0x90
sum:                                    # @sum
.Lfunc_begin0:
	.file	1 "/build" "sample.c"
	.loc	1 14 0                          # sample.c:14:0
.seh_proc sum
# %bb.0:
	#DEBUG_VALUE: sum:values <- $rcx
	#DEBUG_VALUE: sum:count <- $edx
	subq	$40, %rsp
	.seh_stackalloc 40
	.seh_endprologue
.Ltmp0:
	#DEBUG_VALUE: sum:total <- 0
	.loc	1 17 15 prologue_end            # sample.c:17:15
	testl	%edx, %edx
.Ltmp1:
	.loc	1 17 9 is_stmt 0                # sample.c:17:9
	js	.LBB0_6
.Ltmp2:
# %bb.1:
	#DEBUG_VALUE: sum:values <- $rcx
	#DEBUG_VALUE: sum:count <- $edx
	#DEBUG_VALUE: sum:total <- 0
	#DEBUG_VALUE: i <- 0
	#DEBUG_VALUE: sum:total <- 0
	.loc	1 21 5 is_stmt 1                # sample.c:21:5
	je	.LBB0_2
.Ltmp3:
# %bb.4:
	#DEBUG_VALUE: sum:values <- $rcx
	#DEBUG_VALUE: sum:count <- $edx
	#DEBUG_VALUE: sum:total <- 0
	#DEBUG_VALUE: i <- 0
	.loc	1 21 23 is_stmt 0               # sample.c:21:23
	movl	%edx, %r8d
	xorl	%eax, %eax
	xorl	%r9d, %r9d
.Ltmp4:
	.p2align	4, 0x90
.LBB0_5:                                # =>This Inner Loop Header: Depth=1
	#DEBUG_VALUE: sum:values <- $rcx
	#DEBUG_VALUE: sum:count <- $r8d
	#DEBUG_VALUE: i <- $rax
	#DEBUG_VALUE: sum:total <- $r9d
	.loc	1 22 25 is_stmt 1               # sample.c:22:25
	movl	(%rcx,%rax,4), %edx
.Ltmp5:
	#DEBUG_VALUE: square:x <- $edx
	.loc	1 7 14                          # sample.c:7:14
	imull	%edx, %edx
.Ltmp6:
	.loc	1 22 15                         # sample.c:22:15
	addl	%edx, %r9d
.Ltmp7:
	#DEBUG_VALUE: sum:total <- $r9d
	.loc	1 21 33                         # sample.c:21:33
	addq	$1, %rax
.Ltmp8:
	#DEBUG_VALUE: i <- $rax
	.loc	1 21 23 is_stmt 0               # sample.c:21:23
	cmpq	%rax, %r8
.Ltmp9:
	.loc	1 21 5                          # sample.c:21:5
	jne	.LBB0_5
	jmp	.LBB0_3
.Ltmp10:
.LBB0_2:
	#DEBUG_VALUE: sum:values <- $rcx
	#DEBUG_VALUE: sum:count <- $edx
	#DEBUG_VALUE: sum:total <- 0
	#DEBUG_VALUE: i <- 0
	.loc	1 0 5                           # sample.c:0:5
	xorl	%r9d, %r9d
.Ltmp11:
.LBB0_3:
	#DEBUG_VALUE: sum:values <- $rcx
	#DEBUG_VALUE: sum:count <- [DW_OP_LLVM_entry_value 1] $edx
	#DEBUG_VALUE: clamp:value <- $r9d
	cmpl	$255, %r9d
	movl	$255, %eax
	cmovbl	%r9d, %eax
.Ltmp12:
	.loc	1 24 5 is_stmt 1                # sample.c:24:5
	addq	$40, %rsp
	retq
.Ltmp13:
.LBB0_6:
	#DEBUG_VALUE: sum:values <- $rcx
	#DEBUG_VALUE: sum:count <- $edx
	#DEBUG_VALUE: sum:total <- 0
	.loc	1 18 9                          # sample.c:18:9
	movl	%edx, %ecx
.Ltmp14:
	#DEBUG_VALUE: sum:values <- [DW_OP_LLVM_entry_value 1] $rcx
	callq	fail
.Ltmp15:
	int3
.Ltmp16:
	#DEBUG_VALUE: sum:count <- [DW_OP_LLVM_entry_value 1] $edx
.Lfunc_end0:
	.file	2 "/build" "./limits.h"
	.seh_endproc
                                        # -- End function
	.def	first;
	.scl	2;
	.type	32;
	.endef
	.globl	first                           # -- Begin function first
	.p2align	4, 0x90
first:                                  # @first
.Lfunc_begin1:
	.loc	1 27 0                          # sample.c:27:0
# %bb.0:
	.loc	1 27 19 prologue_end            # sample.c:27:19
	movl	$1, %eax
	retq
.Ltmp17:
.Lfunc_end1:
                                        # -- End function
	.def	second;
	.scl	2;
	.type	32;
	.endef
	.globl	second                          # -- Begin function second
	.p2align	4, 0x90
second:                                 # @second
.Lfunc_begin2:
	.loc	1 27 0                          # sample.c:27:0
# %bb.0:
	.loc	1 27 50 prologue_end            # sample.c:27:50
	movl	$2, %eax
	retq
.Ltmp18:
.Lfunc_end2:
                                        # -- End function
	.def	widen;
	.scl	2;
	.type	32;
	.endef
	.globl	widen                           # -- Begin function widen
	.p2align	4, 0x90
widen:                                  # @widen
.Lfunc_begin3:
	.loc	1 32 0                          # sample.c:32:0
# %bb.0:
	#DEBUG_VALUE: widen:x <- $ecx
                                        # kill: def $ecx killed $ecx def $rcx
	.loc	1 34 14 prologue_end            # sample.c:34:14
	leal	1(%rcx), %eax
	.loc	1 34 5 is_stmt 0                # sample.c:34:5
	retq
.Ltmp19:
.Lfunc_end3:
                                        # -- End function
