	.file	"sample.cpp"
	.text
.Ltext0:
	.file 1 "sample.cpp"
	.globl	_Z3runi
	.type	_Z3runi, @function
_Z3runi:
.LVL0:
.LFB5:
	.loc 1 21 1 view -0
	.cfi_startproc
	.loc 1 22 5 view .LVU1
.LBB24:
.LBI24:
	.loc 1 2 14 view .LVU2
	.loc 1 2 14 is_stmt 0 view .LVU3
.LBE24:
	.loc 1 23 5 is_stmt 1 view .LVU4
	.loc 1 26 5 view .LVU5
.LBB25:
.LBI25:
	.loc 1 23 18 view .LVU6
.LBB26:
	.loc 1 24 9 view .LVU7
.LBB27:
.LBI27:
	.loc 1 5 9 view .LVU8
.LBB28:
	.loc 1 7 9 view .LVU9
	.loc 1 8 9 view .LVU10
	.loc 1 8 9 is_stmt 0 view .LVU11
.LBE28:
.LBE27:
.LBB29:
.LBI29:
	.loc 1 5 9 is_stmt 1 view .LVU12
.LBB30:
	.loc 1 7 9 view .LVU13
	.loc 1 8 9 view .LVU14
	.loc 1 8 9 is_stmt 0 view .LVU15
.LBE30:
.LBE29:
.LBE26:
.LBE25:
.LBB32:
.LBI32:
	.loc 1 15 3 is_stmt 1 view .LVU16
	.loc 1 15 3 is_stmt 0 view .LVU17
.LBE32:
.LBB34:
.LBB31:
	.loc 1 24 38 view .LVU18
	leal	3(%rdi,%rdi), %eax
.LBE31:
.LBE34:
.LBB35:
.LBB33:
	.loc 1 17 16 view .LVU19
	leal	(%rax,%rax,2), %eax
.LBE33:
.LBE35:
	.loc 1 27 1 view .LVU20
	ret
	.cfi_endproc
.LFE5:
	.size	_Z3runi, .-_Z3runi
.Letext0:
