	.text
	.file	"sample.cpp"
	.file	1 "/build" "sample.cpp"
	.globl	_Z3runi                         # -- Begin function _Z3runi
	.p2align	4, 0x90
	.type	_Z3runi,@function
_Z3runi:                                # @_Z3runi
.Lfunc_begin0:
	.loc	1 21 0                          # sample.cpp:21:0
	.cfi_startproc
# %bb.0:
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset %rbp, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register %rbp
	subq	$32, %rsp
	movl	%edi, -4(%rbp)
.Ltmp0:
	.loc	1 22 21 prologue_end            # sample.cpp:22:21
	movl	-4(%rbp), %esi
	.loc	1 22 13 is_stmt 0               # sample.cpp:22:13
	leaq	-16(%rbp), %rdi
	callq	_ZN7CounterC2Ei
	.loc	1 23 18 is_stmt 1               # sample.cpp:23:18
	leaq	-16(%rbp), %rax
	movq	%rax, -24(%rbp)
	.loc	1 26 18                         # sample.cpp:26:18
	leaq	-24(%rbp), %rdi
	movl	$1, %esi
	callq	_ZZ3runiENK3$_0clEi
	movl	%eax, %edi
	.loc	1 26 12 is_stmt 0               # sample.cpp:26:12
	callq	_Z5timesIiLi3EET_S0_
	.loc	1 26 5                          # sample.cpp:26:5
	addq	$32, %rsp
	popq	%rbp
	.cfi_def_cfa %rsp, 8
	retq
.Ltmp1:
.Lfunc_end0:
	.size	_Z3runi, .Lfunc_end0-_Z3runi
	.cfi_endproc
                                        # -- End function
	.section	.text._ZN7CounterC2Ei,"axG",@progbits,_ZN7CounterC2Ei,comdat
	.weak	_ZN7CounterC2Ei                 # -- Begin function _ZN7CounterC2Ei
	.p2align	4, 0x90
	.type	_ZN7CounterC2Ei,@function
_ZN7CounterC2Ei:                        # @_ZN7CounterC2Ei
.Lfunc_begin1:
	.loc	1 3 0 is_stmt 1                 # sample.cpp:3:0
	.cfi_startproc
# %bb.0:
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset %rbp, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register %rbp
	movq	%rdi, -8(%rbp)
	movl	%esi, -12(%rbp)
	movq	-8(%rbp), %rax
.Ltmp2:
	.loc	1 2 42 prologue_end             # sample.cpp:2:42
	movl	-12(%rbp), %ecx
	.loc	1 2 35 is_stmt 0                # sample.cpp:2:35
	movl	%ecx, (%rax)
	.loc	1 2 50                          # sample.cpp:2:50
	movl	$0, 4(%rax)
	.loc	1 4 5 is_stmt 1                 # sample.cpp:4:5
	popq	%rbp
	.cfi_def_cfa %rsp, 8
	retq
.Ltmp3:
.Lfunc_end1:
	.size	_ZN7CounterC2Ei, .Lfunc_end1-_ZN7CounterC2Ei
	.cfi_endproc
                                        # -- End function
	.section	.text._Z5timesIiLi3EET_S0_,"axG",@progbits,_Z5timesIiLi3EET_S0_,comdat
	.weak	_Z5timesIiLi3EET_S0_            # -- Begin function _Z5timesIiLi3EET_S0_
	.p2align	4, 0x90
	.type	_Z5timesIiLi3EET_S0_,@function
_Z5timesIiLi3EET_S0_:                   # @_Z5timesIiLi3EET_S0_
.Lfunc_begin2:
	.loc	1 16 0                          # sample.cpp:16:0
	.cfi_startproc
# %bb.0:
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset %rbp, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register %rbp
	movl	%edi, -4(%rbp)
.Ltmp4:
	.loc	1 17 14 prologue_end            # sample.cpp:17:14
	imull	$3, -4(%rbp), %eax
	.loc	1 17 5 is_stmt 0                # sample.cpp:17:5
	popq	%rbp
	.cfi_def_cfa %rsp, 8
	retq
.Ltmp5:
.Lfunc_end2:
	.size	_Z5timesIiLi3EET_S0_, .Lfunc_end2-_Z5timesIiLi3EET_S0_
	.cfi_endproc
                                        # -- End function
	.text
	.p2align	4, 0x90                         # -- Begin function _ZZ3runiENK3$_0clEi
	.type	_ZZ3runiENK3$_0clEi,@function
_ZZ3runiENK3$_0clEi:                    # @"_ZZ3runiENK3$_0clEi"
.Lfunc_begin3:
	.loc	1 23 0 is_stmt 1                # sample.cpp:23:0
	.cfi_startproc
# %bb.0:
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset %rbp, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register %rbp
	subq	$32, %rsp
	movq	%rdi, -8(%rbp)
	movl	%esi, -12(%rbp)
	movq	-8(%rbp), %rax
	movq	%rax, -24(%rbp)                 # 8-byte Spill
.Ltmp6:
	.loc	1 24 16 prologue_end            # sample.cpp:24:16
	movq	(%rax), %rdi
	.loc	1 24 24 is_stmt 0               # sample.cpp:24:24
	movl	-12(%rbp), %esi
	.loc	1 24 16                         # sample.cpp:24:16
	callq	_ZN7CounterclEi
	movl	%eax, %ecx
	movq	-24(%rbp), %rax                 # 8-byte Reload
	movl	%ecx, -16(%rbp)                 # 4-byte Spill
	.loc	1 24 29                         # sample.cpp:24:29
	movq	(%rax), %rdi
	.loc	1 24 37                         # sample.cpp:24:37
	movl	-12(%rbp), %esi
	.loc	1 24 29                         # sample.cpp:24:29
	callq	_ZN7CounterclEi
	movl	%eax, %ecx
	movl	-16(%rbp), %eax                 # 4-byte Reload
	.loc	1 24 27                         # sample.cpp:24:27
	addl	%ecx, %eax
	.loc	1 24 9                          # sample.cpp:24:9
	addq	$32, %rsp
	popq	%rbp
	.cfi_def_cfa %rsp, 8
	retq
.Ltmp7:
.Lfunc_end3:
	.size	_ZZ3runiENK3$_0clEi, .Lfunc_end3-_ZZ3runiENK3$_0clEi
	.cfi_endproc
                                        # -- End function
	.section	.text._ZN7CounterclEi,"axG",@progbits,_ZN7CounterclEi,comdat
	.weak	_ZN7CounterclEi                 # -- Begin function _ZN7CounterclEi
	.p2align	4, 0x90
	.type	_ZN7CounterclEi,@function
_ZN7CounterclEi:                        # @_ZN7CounterclEi
.Lfunc_begin4:
	.loc	1 6 0 is_stmt 1                 # sample.cpp:6:0
	.cfi_startproc
# %bb.0:
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset %rbp, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register %rbp
	movq	%rdi, -8(%rbp)
	movl	%esi, -12(%rbp)
	movq	-8(%rbp), %rax
.Ltmp8:
	.loc	1 7 19 prologue_end             # sample.cpp:7:19
	movl	-12(%rbp), %ecx
	.loc	1 7 16 is_stmt 0                # sample.cpp:7:16
	addl	(%rax), %ecx
	movl	%ecx, (%rax)
	.loc	1 8 16 is_stmt 1                # sample.cpp:8:16
	movl	(%rax), %eax
	.loc	1 8 9 is_stmt 0                 # sample.cpp:8:9
	popq	%rbp
	.cfi_def_cfa %rsp, 8
	retq
.Ltmp9:
.Lfunc_end4:
	.size	_ZN7CounterclEi, .Lfunc_end4-_ZN7CounterclEi
	.cfi_endproc
                                        # -- End function
